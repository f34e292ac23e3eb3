# Sourced by the scripts beside it, from anywhere.
# shellcheck shell=bash
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
# A build must not take its paths from another project's shell.
unset CDPATH
# Lets the presets, whose folders differ, share what ccache keeps.
export CCACHE_NOHASHDIR=1

Say() { printf '%s\n' "$*" >&2; }
Die() { Say "${0##*/}: $*"; exit 1; }

# Prints the comment at the top of a script as its help.
Help() { sed -n '2,${/^#/!q;s/^# \{0,1\}//p}' "$0"; }

# Runs a command with its output kept in the file $1; shows the file's end when the command fails.
Quietly() {
    local log=$1 status=0
    shift
    "$@" >"$log" 2>&1 </dev/null || status=$?
    if ((status)); then
        tail -n 60 "$log" >&2
        Say "${0##*/}: failed: $*"
        Say "The whole output is in $log"
    fi
    return "$status"
}

# Configures and builds the preset $1, all of it or the targets named after it. Two scripts at a
# time take turns.
Build() {
    local preset=$1 dir=$root/build/$1 target targets=()
    shift
    for target; do targets+=(--target "$target"); done
    mkdir -p "$dir"
    # ninja runs cmake again for a changed CMakeLists.txt, but does not watch the presets.
    if [[ ! -e $dir/build.ninja || $root/CMakePresets.json -nt $dir/build.ninja ]]; then
        (cd "$root" && Quietly "$dir/configure.log" flock -o "$dir" cmake --preset "$preset") || return
    fi
    (cd "$root" && Quietly "$dir/build.log" flock -o "$dir" cmake --build --preset "$preset" "${targets[@]}")
}

# Prints where the process $1 listens on TCP, one line each: "loopback PORT" or "network PORT".
ListeningAddresses() {
    local fd sockets=' '
    for fd in "/proc/$1/fd/"*; do
        fd=$(readlink "$fd" || true)
        [[ $fd != socket:* ]] || sockets+="${fd//[!0-9]/} "
    done 2>/dev/null
    # Addresses stand there in hexadecimal, each 32 bits with the low byte first: 127.x.y.z ends in
    # 7F, as IPv6 it is ::ffff:127.x.y.z, and the last one is ::1. 0A is the state "listening".
    local address port state inode loopback='^(|0{16}FFFF0000).{6}7F$|^0{24}01000000$'
    while read -r _ address _ state _ _ _ _ _ inode _; do
        port=$((16#${address##*:}))
        address=${address%:*}
        [[ $state == 0A && $sockets == *" $inode "* ]] || continue
        if [[ $address =~ $loopback ]]; then echo "loopback $port"; else echo "network $port"; fi
    done < <(cat /proc/net/tcp /proc/net/tcp6 2>/dev/null | grep -v local_address)
}

# Prints the first port from 5900 on, VNC's, that nobody listens on.
FreePort() {
    local port=5900
    while grep -qi "$(printf ':%04X .* 0A ' "$port")" /proc/net/tcp{,6}; do ((++port)); done 2>/dev/null
    echo "$port"
}

# Two templates of letters to members, into the current folder.
MakeTemplates() {
    printf 'Welcome\nMembership Renewal\n@' >tnames.txt
    cat >templ0.txt <<'END'
Welcome to our fitness center!

Your first evaluation is included in your membership. Please ask at the
desk for a date that suits you.

We look forward to seeing you.


The team of your fitness center
END
    cat >templ1.txt <<'END'
Your membership is about to end, or has ended not long ago.

We would be glad to keep you with us. Please stop by at the desk to renew
it; that takes five minutes.


The team of your fitness center
END
}
