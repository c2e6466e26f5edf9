# Sourced: a root folder of its own, into which packages are installed and from which they are removed, by dpkg with a
# database of its own. What the packages depend on is taken from this machine, so nothing of it is in the root.
set -euo pipefail

fail()
{
    echo "failed: $*" >&2
    exit 1
}

# of_root ROOT ARGUMENT...: dpkg on that root, by whoever runs this
of_root()
{
    local root=$1
    shift
    PATH=$PATH:/usr/sbin:/sbin dpkg --root="$root" --log=/dev/null --force-not-root --force-depends \
        --force-script-chrootless "$@" >"$root.log" 2>&1 || { cat "$root.log" >&2; fail "dpkg $*"; }
}

# make_root ROOT: an empty one
make_root()
{
    rm -rf "$1"
    mkdir -p "$1"/var/lib/dpkg/{info,triggers,updates}
    touch "$1"/var/lib/dpkg/{available,status}
}

# files_of ROOT: all that stands there, but for dpkg's own database
files_of()
{
    (cd "$1" && find . -mindepth 1 -not -path './var/lib/dpkg/*' | LC_ALL=C sort)
}
