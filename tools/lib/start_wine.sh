#!/bin/sh
# start_wine.sh WINE ARGS...
#
# Becomes the Windows program (or the wineserver) that the arguments name,
# where Wine's own files are in place. WINEPREFIX is set.

# Succeeds when a wineserver for the prefix is running.
server_runs()
{
	# wineserver names its folder after the prefix's device and inode, below
	# one of the user's (Debian's) or the user's one. A server that was killed
	# outright leaves its socket behind; to be deceived by that costs no more
	# than the wait described below.
	id=$(stat -c '%D %i' -- "$WINEPREFIX" 2>/dev/null) || return
	id=$(printf 'server-%s-%x' "${id% *}" "${id#* }")
	for socket in /tmp/wine-*/"$id"/socket /tmp/.wine-*/"$id"/socket; do
		if [ -O "$socket" ]; then return; fi
	done
	return 1
}

# Starts the server and Wine's background programs (services, explorer).
# They outlive the program that causes their start by about two seconds, and
# keep its standard error open. So that nobody who reads the end of a pipe has
# to wait for them, they are started by a program with nothing of the caller's.
start_server()
{
	if [ -e "$WINEPREFIX/system.reg" ]; then
		"$1" hostname </dev/null >/dev/null 2>&1 || :
		return
	fi
	# A new prefix. The two libraries would ask to download their engines,
	# and the menu builder would write into the caller's home folder.
	mkdir -p -- "$WINEPREFIX"
	WINEARCH=win32 \
	WINEDLLOVERRIDES="mscoree,mshtml=;winemenubuilder.exe=d" \
		"$1" wineboot --init </dev/null >/dev/null 2>&1 || :
}

case $1 in
*/wineserver) ;;
*) server_runs || start_server "$1" ;;
esac
exec "$@"
