#!/bin/sh
# usage: tests/check_includes.sh FOLDER | --self-test
# Fails, with file and line, when an include in the source tree FOLDER does not point down:
#
#   app > members workouts evaluations bodycomp transfer > doc > ui > store > platform/qt platform/db
#   backup > ui
#   reports > store
#
# Folders at the same height do not include each other, nobody below includes tools, tests or
# bench, and these exercise what they like; only tools is held to the store and what is below it. Nobody
# includes backup.
# platform/db, store and tools know no Qt; only platform/db (with tests and bench, which look over
# its shoulder) knows SQLite. Headers include no generated form and start with #pragma once.
set -u

check() {
    cd "$1" || return 2
    # shellcheck disable=SC2046 # no name has a blank
    set -- $(ls -d app members workouts evaluations bodycomp transfer doc ui reports store platform \
        tools backup tests bench 2>/dev/null)
    [ $# -gt 0 ] || { echo "check_includes.sh: no source folders in $PWD" >&2; return 2; }
    {
        grep -rn --include='*.h' --include='*.cpp' -E '^[[:space:]]*#[[:space:]]*include' "$@"
        grep -rL --include='*.h' -E '^#pragma once[[:space:]]*$' "$@" | awk '{ print $0 ":1:pragma" }'
    } | awk '
        BEGIN {
            n = split("platform/db 1 platform/qt 1 store 2 ui 3 reports 3 doc 4 members 5 workouts 5" \
                " evaluations 5 bodycomp 5 transfer 5 app 6 backup 7 tools 7 tests 8 bench 8", word, " ")
            for (i = 1; i < n; i += 2) {
                height[word[i]] = word[i + 1]
            }
        }
        # The folder of the table that a path belongs to; empty when it is none of them.
        function home(path,    part) {
            split(path, part, "/")
            if (part[1] == "platform") {
                part[1] = part[1] "/" part[2]
            }
            return index(path, "/") && (part[1] in height) ? part[1] : ""
        }
        function fault(text) {
            print file ":" line ": " text
            faults = 1
        }
        {
            match($0, /:[0-9]+:/)
            file = substr($0, 1, RSTART - 1)
            line = substr($0, RSTART + 1, RLENGTH - 2)
            rest = substr($0, RSTART + RLENGTH)
            from = home(file)
            free = from == "tests" || from == "bench"
        }
        from == "" { fault("this folder is not in the table of tests/check_includes.sh"); next }
        rest == "pragma" { fault("the header has no #pragma once"); next }
        !match(rest, /["<][^">]+[">]/) { fault("the included name is not written out"); next }
        {
            quoted = substr(rest, RSTART, 1) == "\""
            base = name = substr(rest, RSTART + 1, RLENGTH - 2)
            sub(/.*\//, "", base)
            to = home(name)
        }
        file ~ /\.h$/ && base ~ /^ui_.*\.h$/ { fault("a header includes the generated form " name); next }
        name ~ /(^|\/)\.\.?\// \
            || (to == "" && quoted && !free && base !~ /^(ui_.*\.h|.*\.moc|moc_.*\.cpp)$/) {
            fault(name " is not named from the source root")
            next
        }
        !free && base == "sqlite3.h" && from != "platform/db" { fault("only platform/db knows SQLite") }
        (from == "platform/db" || from == "store" || from == "tools") \
            && name ~ /^(Q[A-Z]|Qt|q[a-z_]+\.h$)/ { fault(from " knows no Qt, but includes " name); next }
        to == "" || free || to == from { next }
        from == "tools" && height[to] <= height["store"] && to != "platform/qt" { next }
        from == "backup" && height[to] <= height["ui"] { next }
        from == "backup" || from == "tools" || height[to] >= height[from] || (from == "store" && to == "platform/qt") {
            fault(from " must not include " to ": " name)
        }
        END { exit faults }
    '
}

# What each file includes is at fault, unless its name is "fine": told by file and line must be this
# and nothing else.
self_test() {
    tree=$(mktemp -d) || return 2
    trap 'rm -rf "$tree"' EXIT
    mkdir "$tree/empty"
    while read -r file names; do
        mkdir -p "$tree/src/${file%/*}"
        case $file in
            *NoPragma.h) begin='// #pragma once' include='#include' ;;
            *.h) begin='#pragma once' include=' #  include' ;;
            *) begin='// #include "app/A.h"' include='#include' ;;
        esac
        printf '%s\n' "$begin" >"$tree/src/$file"
        for name in $names; do echo "$include $name"; done >>"$tree/src/$file"
        case $file in
            */fine*) ;;
            *NoPragma.h) echo "$file:1" ;;
            *) awk -v file="$file" 'NR > 1 { print file ":" NR }' "$tree/src/$file" ;;
        esac
    done >"$tree/expected" <<'CASES'
app/bad.cpp "tools/DemoCenter.h" "tests/store/TestCenter.h" "../doc/CorvanaDoc.h"
doc/bad.h "members/MemberDlg.h" <app/MainFrame.h> "bench/Rows.h"
ui/bad.cpp "doc/CorvanaDoc.h" "ui/../app/MainFrame.h" FORM_HEADER
store/bad.cpp "ui/Convert.h" "platform/qt/Settings.h" <QString> "DAOWk.h" <sqlite3.h>
store/bad.h <QtCore/QString>
platform/db/bad.h "store/sets/DAOWk.h" "platform/qt/Dialog.h" <qstring.h>
platform/qt/bad.h "ui/Convert.h" "platform/db/Database.h"
members/bad.h "workouts/WorkoutDlg.h" "ui_MemberDlg.h" "members/ui_MemberDlg.h"
transfer/bad.cpp "bodycomp/BodyCompDlg.h" "backup/A.h"
reports/bad.cpp "ui/PrintOut.h" "doc/CorvanaDoc.h" "backup/A.h" <sqlite3.h>
ui/worse.cpp "reports/document/Report.h"
backup/bad.cpp "doc/CorvanaDoc.h" "app/MainFrame.h" "tools/Outcome.h" <sqlite3.h>
tools/bad.cpp <QCoreApplication> "ui/Convert.h" "platform/qt/Settings.h" "sqlite3.h"
tests/app/bad.h "ui_MemberDlg.h"
platform/net/bad.cpp <string>
tests/ui/NoPragma.h <string>
app/fine.cpp "app/A.h" "ui_A.h" "members/A.h" "bodycomp/A.h" "doc/A.h" "ui/A.h" <QWidget>
members/fine.cpp "members/A.h" "platform/qt/A.h" "platform/db/A.h" "store/A.h" "fine.moc"
reports/fine.cpp "reports/A.h" "ui_A.h" "store/A.h" "platform/qt/A.h" <QWidget>
backup/fine.cpp "backup/A.h" "ui_A.h" "ui/A.h" "store/A.h" "platform/qt/A.h" <QWidget>
store/fine.h "store/A.h" "platform/db/A.h" <queue> <sys/stat.h>
platform/db/fine.cpp <sqlite3.h>
tools/fine.cpp "tools/A.h" "store/A.h" "platform/db/A.h" <CLI/CLI.hpp>
tests/app/fine.cpp "app/A.h" "tests/A.h" "bench/A.h" "A.h" <sqlite3.h> <QTest>
CASES
    (check "$tree/src") >"$tree/told" && return 1
    (check "$tree/empty") 2>/dev/null && return 1
    sed 's/: .*//' "$tree/told" | sort -u >"$tree/lines"
    sort "$tree/expected" | diff - "$tree/lines"
}

case ${1:---help} in
    --self-test) self_test ;;
    --help) echo "usage: check_includes.sh FOLDER | --self-test" >&2 && exit 2 ;;
    *) check "$1" ;;
esac
