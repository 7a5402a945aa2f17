# shellcheck shell=bash
# Making the private i386 system that has Wine in it. Needs cache.sh and apt.sh;
# lib is the folder that they are in.
# shellcheck disable=SC2154

wine_root_packages=(
	wine32 wine       # Wine, and the 32-bit part that is all we need of it
	fonts-wine        # Tahoma (the dialog font), MS Sans Serif and the like
	fonts-liberation  # Arial, Times New Roman and Courier New by their metrics
	libasound2        # sound, by ALSA
	locales           # the sources of the locales
)

# The language of a locale decides Wine's ANSI code page: 1252 for this one, which
# the prefix is made under, and another for each of those that only tests need.
wine_locale=en_US.UTF-8
# shellcheck disable=SC2034 # for tools/setup
test_locales=(
	pl_PL.UTF-8 # 1250
	ru_RU.UTF-8 # 1251
	el_GR.UTF-8 # 1253
	tr_TR.UTF-8 # 1254
	he_IL.UTF-8 # 1255
	ar_SA.UTF-8 # 1256
	lt_LT.UTF-8 # 1257
	ja_JP.UTF-8 # 932
	ko_KR.UTF-8 # 949
)

# What a complete root records about itself, so that a change to the lists above
# leads to a new one.
wine_root_contents()
{
	echo "${wine_root_packages[*]} $wine_locale"
}

wine_root_is_ready()
{
	[[ -e $wine_mounts && -r $wine_root/contents &&
		$(<"$wine_root/contents") == "$(wine_root_contents)" ]]
}

# Whether file systems can be mounted here.
can_mount()
{
	as_root "$lib/mount_namespace" mount --bind "$lib" "$lib" 2>/dev/null
}

# A name as a table of mounts has it.
mount_table_name()
{
	local name=${1//\\/\\134}
	echo "${name// /\\040}"
}

# Writes the table of the mounts that put the root's /usr and /etc in place.
# What the machine has in these that is its own shows through.
write_wine_mounts()
{
	local name root
	root=$(mount_table_name "$wine_root")
	for name in etc/passwd etc/group etc/hosts etc/resolv.conf etc/localtime usr/local usr/src; do
		if [[ -e /$name ]]; then echo "/$name $root/$name none rbind 0 0"; fi
	done
	echo "$root/etc /etc none rbind 0 0"
	echo "$root/usr /usr none rbind 0 0"
}

# Prints the packages by the names that they have in this machine's suite: Debian 13
# has renamed libraries whose time has grown to 64 bits.
named_in_suite()
{
	local package
	for package; do
		if apt-cache show "${package}t64" >/dev/null 2>&1; then package+=t64; fi
		echo "$package"
	done
}

# fill_wine_root ROOT SUITE MIRROR KEYRING PACKAGES, as root in a mount namespace of its
# own, so that a root whose making was interrupted has nothing mounted in it.
fill_wine_root()
{
	local root=$1 suite=$2 mirror=$3 keyring=$4 packages=$5 name
	# debootstrap cannot do with a name that has a space in it.
	mkdir "$root"
	mount --bind "$root" /mnt
	root=/mnt
	debootstrap --arch=i386 --variant=minbase --include="$packages" \
		--keyring="$keyring" "$suite" "$root" "$mirror"
	chroot "$root" localedef -i "${wine_locale%.*}" -f "${wine_locale#*.}" "$wine_locale"
	rm -rf "$root"/var/cache/apt/archives/*.deb
	# What the machine's own is mounted over has to be a file of the root,
	# and no link out of it.
	for name in passwd group hosts resolv.conf localtime; do
		if [[ -L $root/etc/$name || ! -e $root/etc/$name ]]; then
			rm -f "$root/etc/$name"
			: >"$root/etc/$name"
		fi
	done
	wine_root_contents >"$root/contents"
}

# Makes the root, under another name until it is complete.
make_wine_root()
{
	local suite address mirror keyring packages new=$wine_root.new old=$wine_root.old
	# shellcheck source=/dev/null # VERSION_CODENAME is the suite
	suite=$(. /etc/os-release && echo "$VERSION_CODENAME")
	if ! address=$(debian_source "$suite" 2>/dev/null); then
		# apt knows no origins before it has the indexes.
		apt_update
		address=$(debian_source "$suite")
	fi
	mirror=$address
	if [[ $mirror == mirror+file:* ]]; then
		# A file that names mirrors to choose from.
		mirror=$(sed -n '/^[a-z]*:/{s/[[:space:]].*//;p;q;}' "${mirror#mirror+file:}")
	fi
	keyring=$(source_keyring "$address" "$suite" "$cache/keyring.gpg")

	local name proxies=()
	for name in http https; do
		local proxy
		proxy=$(apt_setting "Acquire::$name::Proxy")
		if [[ $proxy == *://* ]]; then proxies+=("${name}_proxy=$proxy"); fi
	done

	packages=$(named_in_suite "${wine_root_packages[@]}" | paste -sd ,)
	as_root rm -rf "$new" "$old"
	rm -rf "$wine_prefix_template"
	# shellcheck disable=SC2016 # for the inner shell
	as_root env "${proxies[@]}" LC_ALL=C "$lib/mount_namespace" bash -euc '
		. "$1/wine_root.sh"
		fill_wine_root "${@:2}"' \
		bash "$lib" "$new" "$suite" "$mirror" "$keyring" "$packages"
	if [[ -e $wine_root ]]; then as_root mv "$wine_root" "$old"; fi
	as_root mv "$new" "$wine_root"
	write_wine_mounts >"$wine_mounts.new"
	mv "$wine_mounts.new" "$wine_mounts"
	as_root rm -rf "$old"
}
