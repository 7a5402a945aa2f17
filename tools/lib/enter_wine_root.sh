#!/bin/sh
# enter_wine_root.sh MOUNTS DROP WINE ARGS...
#
# Runs Wine from the private i386 system. It is called as root of a mount
# namespace of its own, in which the mounts of the table MOUNTS put that
# system's /usr and /etc in the place of the machine's. Everything else stays
# as it is, so that each path means the same to the Windows program as to its
# caller, whatever folder it is in. The mounts vanish with the namespace's last
# process.
#
# DROP is a command that gives up being root there, or empty.

lib=${0%/*} drop=$2
mount --all --fstab "$1" || exit 125
shift 2
if [ -z "$drop" ]; then
	. "$lib/start_wine.sh"
fi
# shellcheck disable=SC2086 # a command and its arguments
exec $drop "$lib/start_wine.sh" "$@"
