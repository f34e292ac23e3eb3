#!/bin/bash
# Runs scripts/run in a tree whose programs only stand in, and fails unless a user's settings stay as
# they are, and so a user's templates of letters; who has none gets some of letters.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
mkdir -p "$folder"/{scripts,bin,build/release/{app,tools},own/Halvetta}
cp "$root"/scripts/{run,lib.sh} "$folder/scripts"
Program() { printf '#!/bin/sh\n%s\n' "$2" >"$folder/$1" && chmod +x "$folder/$1"; }
for name in scripts/setup build/release/tools/corvana-db bin/cmake; do Program "$name" ''; done
# shellcheck disable=SC2016 # for the program
Program build/release/app/corvana 'cat "$XDG_CONFIG_HOME/Halvetta/Corvana.conf" 2>/dev/null || echo none'

Run() {
    QT_QPA_PLATFORM=offscreen XDG_CONFIG_HOME=$folder/$1 PATH=$folder/bin:$PATH \
        "$folder/scripts/run" --data "$folder/data"
}
[[ $(Run new) == none ]]
echo own >"$folder/own/Halvetta/Corvana.conf"
[[ $(Run own) == own ]]
# shellcheck disable=SC2016 # for the program
Program build/release/app/corvana 'cat "$CORV_TXT/templ1.txt" || echo "$CORV_TXT"'
unset CORV_TXT
[[ $(Run own) == *renew* ]]
[[ $(CORV_TXT=$folder/own Run own) == "$folder/own" ]]
