# SPDX-License-Identifier: MIT
# shellcheck shell=bash
# A Debian 12 with nothing installed, in a folder, for scripts that source this. Needs root.

# Where this system takes its own packages from, so that a mirror is used here, too.
debian_mirror()
{
    # shellcheck disable=SC2016  # apt-get expands it
    apt-get indextargets --format '$(REPO_URI) $(RELEASE) $(ORIGIN)' 2>/dev/null |
        awk '$2 == "bookworm" && $3 == "Debian" { print $1; found = 1; exit } END { if (!found) print "http://deb.debian.org/debian" }'
}

# Makes the root in a folder that must not exist.
make_fresh_root()
{
    local root=$1 log
    ((EUID == 0)) || { echo "a fresh root can only be made by root" >&2; return 1; }
    [[ ! -e $root ]] || { echo "$root exists already" >&2; return 1; }
    mkdir -p "$(dirname "$root")"
    log=$root.log
    debootstrap --variant=minbase --include=ca-certificates bookworm "$root" "$(debian_mirror)" >"$log" 2>&1 ||
        { tail -n 20 "$log" >&2; return 1; }
    cp /etc/resolv.conf "$root/etc/resolv.conf"
    printf 'APT::Get::Assume-Yes "true";\nAPT::Install-Recommends "false";\nDpkg::Use-Pty "false";\n' \
        >"$root/etc/apt/apt.conf.d/90unattended"
    apt-config dump Acquire::http::Proxy >"$root/etc/apt/apt.conf.d/91proxy"
    in_root "$root" apt-get -q -o APT::Update::Error-Mode=any update >"$log" 2>&1 ||
        { tail -n 20 "$log" >&2; return 1; }
}

# Runs a command in it, with a /proc that goes with the command.
in_root()
{
    local root=$1
    shift
    # shellcheck disable=SC2016  # the inner shell expands it
    unshare --mount --pid --fork bash -c 'mount -t proc proc "$1/proc" && root=$1 && shift && exec env -i \
        PATH=/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin HOME=/ LC_ALL=C.UTF-8 \
        DEBIAN_FRONTEND=noninteractive chroot "$root" "$@"' - "$root" "$@"
}
