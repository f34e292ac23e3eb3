#!/bin/bash
# usage: vnc_stays_local.sh CORVANA CORVANA_DB
# Shows the real console over VNC with a demo centre, as scripts/run does, and fails when it listens
# anywhere but on the loopback address, or not at all.

# shellcheck source=../../scripts/lib.sh
. "$(dirname "${BASH_SOURCE[0]}")/../../scripts/lib.sh"

folder=$(mktemp -d)
pid=
trap '[[ -z $pid ]] || kill "$pid" 2>/dev/null; rm -rf "$folder"' EXIT
mkdir -m 700 "$folder"/{run,config,config/Halvetta,data}
printf '[settings]\nreport_server=0\n' >"$folder/config/Halvetta/Corvana.conf"
echo 'only for this test' >"$folder/password"
"$2" --data "$folder/data" demo --password-file "$folder/password"
export XDG_RUNTIME_DIR=$folder/run XDG_CONFIG_HOME=$folder/config

QT_QPA_PLATFORM=vnc:port=$(FreePort) "$1" --data "$folder/data" </dev/null &
pid=$!
for _ in {1..200}; do
    addresses=$(ListeningAddresses "$pid")
    if [[ -n $addresses ]] || ! kill -0 "$pid" 2>/dev/null; then break; fi
    sleep 0.1
done
echo "listening: ${addresses:-nowhere}"
[[ $addresses =~ ^loopback\ [0-9]+$ ]]
