# shellcheck shell=sh
# The folder for everything the tools download or make outside the checkout:
# the private Wine, its prefix, logs. Read by sh and bash scripts.

cache=${BRANTEL_CACHE:-${XDG_CACHE_HOME:-${HOME:?is not set, and neither is BRANTEL_CACHE}/.cache}/brantel_notifications}
case $cache in
/*) ;;
*) cache=$PWD/$cache ;;
esac

# A small i386 system that has Wine in it, for machines that have no Wine of
# their own, and the table of the mounts that put it in place (fstab format).
# shellcheck disable=SC2034 # both are for the scripts that read this file
wine_root=$cache/i386-root wine_mounts=$cache/i386-root.mounts

# Wine for 64-bit programs, where BRANTEL_BITS says so; it is the machine's own.
# shellcheck disable=SC2034
wine64=/usr/lib/wine/wine64 wine_kind=
[ "${BRANTEL_BITS:-32}" = 32 ] || wine_kind=-64

# A Wine prefix that nothing has been changed in: new ones are copies of it.
# shellcheck disable=SC2034
wine_prefix_template=$cache/new-prefix$wine_kind
