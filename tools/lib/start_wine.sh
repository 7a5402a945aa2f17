#!/bin/sh
# start_wine.sh WINE ARGS...
#
# Becomes the Windows program (or the wineserver) that the arguments name,
# where Wine's own files are in place. WINEPREFIX is set, and WINEPREFIX_TEMPLATE to
# the folder that a new one is copied from, if there is one. Other programs are named
# by their full path: those that PATH has first may not run beside Wine's files.

# Starts a server if there is none. One that a program starts by itself ends with
# it (Debian's Wine), and the next program has to wait for Wine's services again.
# This one stays a while.
start_server()
{
	"${1%/*}/wineserver" -p3 </dev/null >/dev/null 2>&1 || :
}

make_prefix()
{
	if template_is_of_this_wine; then copy_template; fi
	# As it is where there is half a prefix already.
	[ -e "$WINEPREFIX/.update-timestamp" ] || initialize_prefix "$1"
}

# A prefix knows by the time of this file which Wine it was made by.
template_is_of_this_wine()
{
	[ -e "$WINEPREFIX_TEMPLATE/.update-timestamp" ] &&
		[ "$(/usr/bin/tr -d '\r' <"$WINEPREFIX_TEMPLATE/.update-timestamp")" = \
			"$(/usr/bin/stat -c %Y /usr/share/wine/wine.inf 2>/dev/null)" ]
}

# Nearly all of a prefix are Wine's own libraries. Those that nobody is to write into can be shared.
copy_template()
{
	if [ -z "${BRANTEL_SHARED_PREFIX:-}" ]; then
		make_folder "$WINEPREFIX" copy_folder "$WINEPREFIX_TEMPLATE"
		return
	fi
	# One at a time: all suites of a run begin at once.
	{
		/usr/bin/flock 9
		[ -e "$BRANTEL_SHARED_PREFIX" ] || make_folder "$BRANTEL_SHARED_PREFIX" copy_folder "$WINEPREFIX_TEMPLATE"
	} 9>"$BRANTEL_SHARED_PREFIX.lock"
	make_folder "$WINEPREFIX" share_libraries "$BRANTEL_SHARED_PREFIX"
}

# make_folder FOLDER COMMAND FROM: has the command make it of the other one, under another
# name until it is complete: another program may be about to do the same.
make_folder()
{
	new=$1.new.$$
	{ /usr/bin/mkdir -p -- "${1%/*}" && "$2" "$3" "$new" &&
		/usr/bin/mv -T -- "$new" "$1"; } 2>/dev/null || /usr/bin/rm -rf -- "$new"
}

copy_folder()
{
	/usr/bin/cp -a --reflink=auto -- "$1" "$2"
}

share_libraries()
{
	copy_all_but drive_c "$1" "$2" &&
		copy_all_but windows "$1/drive_c" "$2/drive_c" &&
		copy_all_but system32 "$1/drive_c/windows" "$2/drive_c/windows" &&
		/usr/bin/cp -a --link -- "$1/drive_c/windows/system32" "$2/drive_c/windows"
}

# copy_all_but ENTRY FROM TO
copy_all_but()
{
	/usr/bin/mkdir -- "$3" &&
		/usr/bin/find "$2" -mindepth 1 -maxdepth 1 ! -name "$1" -exec /usr/bin/cp -a -t "$3" -- {} +
}

initialize_prefix()
{
	# Debian's Wine does not look where its fonts are. (It asks for "fonts", and looks through
	# the whole folder of Windows for each of them where that is spelt otherwise.)
	/usr/bin/mkdir -p -- "$WINEPREFIX/drive_c/windows/fonts"
	/usr/bin/ln -sf /usr/share/wine/fonts/* "$WINEPREFIX/drive_c/windows/fonts"
	start_server "$1"
	# The two libraries would ask to download their engines, and the menu
	# builder would write into the caller's home folder.
	log=$(/usr/bin/mktemp)
	WINEDEBUG=err+all \
	WINEDLLOVERRIDES="mscoree,mshtml=;winemenubuilder.exe=d" \
		"$1" wineboot --init </dev/null >"$log" 2>&1 || :
	# A prefix that is half made would pass for a whole one from now on.
	if ! [ -e "$WINEPREFIX/.update-timestamp" ] ||
		! [ -e "$WINEPREFIX/drive_c/windows/system32/kernel32.dll" ]; then
		echo "tools/wine: Wine could not make the prefix $WINEPREFIX:" >&2
		/usr/bin/tail -n 20 "$log" >&2
		/usr/bin/rm -f "$log" "$WINEPREFIX/.update-timestamp"
		exit 125
	fi
	/usr/bin/rm -f "$log"
	# Where there is no window manager, Wine waits two seconds for one to take
	# away each window, and windows have no title bars.
	"$1" reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d N /f \
		</dev/null >/dev/null 2>&1 || :
	# As it starts, each program would look for the machine's time zone among 140 of
	# them: a third and more of all that it asks of the server. Without them the
	# machine's own rules hold.
	"$1" reg delete 'HKLM\Software\Microsoft\Windows NT\CurrentVersion\Time Zones' /f \
		</dev/null >/dev/null 2>&1 || :
}

# Wine's background programs (services, explorer) inherit the standard error of
# the program that causes them to be started, and outlive it. Whoever reads that
# from a pipe would wait for their end instead of the program's. So they get
# another pipe, from which a child hands on what comes until the program is gone.
# Where standard output is the same pipe it takes the same way, in its order.
# (After exec the program has this process's id, and is the child's parent.)
become_with_relay()
{
	# Its Perl may not know the locale that is for the program.
	PERL_BADLANG=0 exec /usr/bin/perl -e '
		delete $ENV{PERL_BADLANG};
		my $program = $$;
		pipe(my $from, my $to) or die "pipe: $!\n";
		my $child = fork // die "fork: $!\n";
		if ($child == 0) {
			$SIG{$_} = "IGNORE" for qw(INT TERM HUP QUIT);
			close $to;
			close STDIN;
			close STDOUT;
			chdir "/";
			vec(my $readable = "", fileno $from, 1) = 1;
			while (1) {
				my $gone = getppid() != $program;
				my $ready = select(my $ready_ones = $readable, undef, undef, $gone ? 0 : 0.01);
				last if $ready <= 0 && $gone;
				next if $ready <= 0;
				sysread($from, my $data, 65536) or last;
				while (length $data) {
					my $written = syswrite(STDERR, $data) // exit;
					substr($data, 0, $written) = "";
				}
			}
			exit;
		}
		my $same = join(",", (stat STDOUT)[0, 1]) eq join(",", (stat STDERR)[0, 1]);
		open(STDOUT, ">&", $to) if $same;
		open(STDERR, ">&", $to);
		exec { $ARGV[0] } @ARGV;' "$@"
}

case $1 in
*/wineserver) exec "$@" ;;
esac
[ -e "$WINEPREFIX/.update-timestamp" ] || make_prefix "$1"
start_server "$1"
unset WINEPREFIX_TEMPLATE
if [ -p /dev/fd/2 ] || [ -S /dev/fd/2 ]; then become_with_relay "$@"; fi
exec "$@"
