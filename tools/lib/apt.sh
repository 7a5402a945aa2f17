# shellcheck shell=bash
# Questions to apt and dpkg, and installing packages. Whoever sources this has sourced cache.sh.
# shellcheck disable=SC2154 # the cache folder

# Runs a command as root.
as_root()
{
	if ((EUID == 0)); then
		"$@"
	elif type -P sudo >/dev/null; then
		sudo "$@"
	else
		echo "This needs root, or sudo: $*" >&2
		return 1
	fi
}

# Prints those of the packages that are not installed.
missing_packages()
{
	local status name package
	local -A installed=()
	while read -r status name; do
		if [[ $status == installed ]]; then installed[$name]=1; fi
	done < <(dpkg-query -W -f '${db:Status-Status} ${Package}\n' "$@" 2>/dev/null)
	for package; do
		if [[ -z ${installed[$package]-} ]]; then echo "$package"; fi
	done
}

# Fetches the package indexes, if that was not done in the last ten minutes. Where one of several
# sources is out of order the others may well do, so that is no failure: if
# something is lacking for it the installation fails.
apt_update()
{
	local attempt output stamp=$cache/apt-updated
	if [[ -n $(find "$stamp" -mmin -10 2>/dev/null) ]]; then return; fi
	for ((attempt = 0; attempt < 60; ++attempt)); do
		output=$(as_root env LC_ALL=C apt-get update 2>&1 || :)
		echo "$output"
		# Unlike that of dpkg, apt does not wait for this lock.
		if [[ $output != *"Could not get lock"* ]]; then break; fi
		sleep 5
	done
	if ! grep -q '^\(Err\|[EW]\):' <<<"$output"; then : >"$stamp"; fi
}

# Rather fails than take something away from the machine, such as another mail
# server.
apt_install()
{
	as_root env DEBIAN_FRONTEND=noninteractive apt-get \
		-o DPkg::Lock::Timeout=300 \
		install -y --no-install-recommends --no-remove "$@"
}

# Prints a setting of apt's.
apt_setting()
{
	local value=
	eval "$(apt-config shell value "$1")"
	echo "$value"
}

# Prints the address from which apt has a suite of Debian itself (and not of
# another origin that calls a suite the same).
debian_source()
{
	local origin codename component address
	# shellcheck disable=SC2016 # apt replaces these
	while IFS='|' read -r origin codename component address; do
		if [[ $origin == Debian && $codename == "$1" && $component == main ]]; then
			echo "${address%/}"
			return
		fi
	done < <(apt-get indextargets \
		--format '$(ORIGIN)|$(CODENAME)|$(COMPONENT)|$(REPO_URI)' \
		'Created-By: Packages')
	echo "apt has no source of Debian's suite $1" >&2
	return 1
}

# source_key ADDRESS SUITE: prints what the sources name as the key of a suite
# (Signed-By), which is a file, fingerprints, a key itself, or nothing.
# *.list files have a line for each source, *.sources files a paragraph.
source_key()
{
	local lists=() paragraphs=() file
	for file in /etc/apt/sources.list /etc/apt/sources.list.d/*.{list,sources}; do
		if [[ ! -r $file ]]; then continue; fi
		case $file in
		*.list) lists+=("$file") ;;
		*.sources) paragraphs+=("$file") ;;
		esac
	done
	# apt gives addresses without what is superfluous in them.
	local normalize='
	function normalized(address) {
		sub(/\/+$/, "", address)
		sub(/:\/\/\//, ":/", address)
		return address
	}'
	awk -v address="$1" -v suite="$2" "$normalize"'
	$1 == "deb" && match($0, /\[[^]]*\]/) {
		options = substr($0, RSTART + 1, RLENGTH - 2)
		split(substr($0, RSTART + RLENGTH), words)
		if (normalized(words[1]) == address && words[2] == suite &&
		    match(tolower(options), /signed-by=[^ ]*/)) {
			print substr(options, RSTART + 10, RLENGTH - 10)
			exit
		}
	}' "${lists[@]}" /dev/null
	awk -v address="$1" -v suite="$2" "$normalize"'
	function has(list, word,    words, i, n) {
		n = split(list, words)
		for (i = 1; i <= n; i++)
			if (normalized(words[i]) == word) return 1
		return 0
	}
	function finish_paragraph(    name) {
		if (!found && tolower(field["enabled"]) != "no" && field["signed-by"] != "" &&
		    has(field["uris"], address) && has(field["suites"], suite)) {
			found = 1
			print field["signed-by"]
		}
		for (name in field) delete field[name]
	}
	/^#/ { next }
	/^[ \t]*$/ || FNR == 1 { finish_paragraph() }
	match($0, /^[A-Za-z-]+:/) {
		last = tolower(substr($0, 1, RLENGTH - 1))
		field[last] = substr($0, RLENGTH + 1)
		gsub(/^[ \t]+|[ \t]+$/, "", field[last])
		next
	}
	/^[ \t]+[^ \t]/ {
		sub(/^[ \t]+/, "")
		field[last] = field[last] "\n" ($0 == "." ? "" : $0)
	}
	END { finish_paragraph() }' "${paragraphs[@]}" /dev/null
}

# Turns keys in their text form, on standard input, into the form gpgv reads.
binary_keys()
{
	local line body='' state=outside
	while IFS= read -r line; do
		line=${line%$'\r'}
		case $state:$line in
		outside:-----BEGIN*) state=head body='' ;;
		head:) state=body ;;
		body:=* | body:-----END*)
			base64 -d <<<"$body"
			state=outside
			;;
		body:*) body+=$line$'\n' ;;
		esac
	done
}

# source_keyring ADDRESS SUITE FILE: prints the name of the keyring that a suite
# is to be verified by. FILE is where one may be made.
source_keyring()
{
	local key
	key=$(source_key "$1" "$2")
	case $key in
	*'-----BEGIN PGP'*) binary_keys <<<"$key" >"$3" ;;
	/*)
		key=${key%%[, $'\n']*}
		if [[ $key != *.asc ]]; then
			echo "$key"
			return
		fi
		binary_keys <"$key" >"$3"
		;;
	*)
		echo /usr/share/keyrings/debian-archive-keyring.gpg
		return
		;;
	esac
	echo "$3"
}
