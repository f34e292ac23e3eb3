#!/bin/sh
# usage: tests/check_includes.sh FOLDER | --self-test
# Fails, with file and line, when an include in the source tree FOLDER does not point down:
#
#   app > members workouts evaluations bodycomp transfer > doc > ui > store > platform/qt platform/db
#
# Folders at the same height do not include each other, nobody below includes tools, tests or
# bench, and these exercise what they like; only tools is held to the store and what is below it.
# platform/db, store and tools know no Qt; only platform/db (with tests and bench, which look over
# its shoulder) knows SQLite. Headers include no generated form and start with #pragma once.
set -u

check() {
    cd "$1" || return 2
    set --
    for folder in app members workouts evaluations bodycomp transfer doc ui store platform tools \
        tests bench; do
        if [ -d $folder ]; then set -- "$@" $folder; fi
    done
    if [ $# -eq 0 ]; then
        echo "check_includes.sh: no source folders in $PWD" >&2
        return 2
    fi
    {
        grep -rn --include='*.h' --include='*.cpp' -E '^[[:space:]]*#[[:space:]]*include' "$@"
        grep -rL --include='*.h' -E '^#pragma once[[:space:]]*$' "$@" | awk '{ print $0 ":1:pragma" }'
    } | awk '
        BEGIN {
            n = split("platform/db 1 platform/qt 1 store 2 ui 3 doc 4 members 5 workouts 5" \
                " evaluations 5 bodycomp 5 transfer 5 app 6 tools 7 tests 8 bench 8", word, " ")
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
            header = file ~ /\.h$/
        }
        from == "" { fault("this folder is not in the table of tests/check_includes.sh"); next }
        rest == "pragma" { fault("the header has no #pragma once"); next }
        {
            if (!match(rest, /["<][^">]+[">]/)) {
                fault("the included name is not written out")
                next
            }
            name = substr(rest, RSTART + 1, RLENGTH - 2)
            quoted = substr(rest, RSTART, 1) == "\""
            base = name
            sub(/.*\//, "", base)
            to = home(name)
        }
        header && base ~ /^ui_.*\.h$/ { fault("a header includes the generated form " name); next }
        name ~ /(^|\/)\.\.?\// { fault(name " is not named from the source root"); next }
        !free && base == "sqlite3.h" && from != "platform/db" { fault("only platform/db knows SQLite") }
        (from == "platform/db" || from == "store" || from == "tools") \
            && name ~ /^(Q[A-Z]|Qt|q[a-z_]+\.h$)/ { fault(from " knows no Qt, but includes " name); next }
        to == "" {
            if (quoted && !free && base !~ /^(ui_.*\.h|.*\.moc|moc_.*\.cpp)$/) {
                fault(name " is not named from the source root")
            }
            next
        }
        free || to == from { next }
        from == "tools" && (height[to] > height["store"] || to == "platform/qt") {
            fault("tools must not include " to ": " name)
            next
        }
        from == "store" && to == "platform/qt" { fault("store must not include platform/qt: " name); next }
        height[to] >= height[from] {
            fault(from " must not include " to ", which is not below it: " name)
        }
        END { exit faults }
    '
}

# Each line is a fault that must be found: the file, the line in it that must be named, its text.
# A file named "fine" must pass.
self_test() {
    tree=$(mktemp -d) || return 2
    trap 'rm -rf "$tree"' EXIT
    failures=0
    while IFS='|' read -r file text; do
        rm -rf "$tree/src"
        mkdir -p "$tree/src/${file%/*}"
        case $file in
            *NoPragma.h) printf '%b\n' "$text" ;;
            *.h) printf '#pragma once\n%b\n' "$text" ;;
            *) printf '\n%b\n' "$text" ;;
        esac >"$tree/src/$file"
        said=$( (check "$tree/src") 2>&1 )
        status=$?
        case $file in
            */fine*) expected='0:' ;;
            *NoPragma.h) expected="1:$file:1: " ;;
            *) expected="1:$file:2: " ;;
        esac
        case $status:$said in
            "$expected"*) [ "$expected" != 0: ] || [ -z "$said" ] || failures=$((failures + 1)) ;;
            *)
                echo "$file with '$text': expected $expected, got $status:$said" >&2
                failures=$((failures + 1))
                ;;
        esac
    done <<'CASES'
doc/Up.cpp|#include "app/MainFrame.h"
doc/UpAngle.cpp|#include <app/MainFrame.h>
doc/Record.h|#  include "members/MemberDlg.h"
ui/Up.cpp|#include "doc/CorvanaDoc.h"
store/Up.cpp|#include "ui/Convert.h"
platform/db/Up.cpp|#include "store/sets/DAOWk.h"
platform/qt/Up.h|#include "ui/Convert.h"
members/Side.cpp|#include "workouts/WorkoutDlg.h"
transfer/Side.cpp|#include "bodycomp/BodyCompDlg.h"
platform/qt/Side.cpp|#include "platform/db/Database.h"
platform/db/Side.h|#include "platform/qt/Dialog.h"
store/Qt.cpp|#include <QString>
store/QtFolder.h|#include <QtCore/QString>
platform/db/Qt.cpp|#include <qstring.h>
tools/Qt.cpp|#include <QCoreApplication>
store/Platform.cpp|#include "platform/qt/Settings.h"
tools/Up.cpp|#include "ui/Convert.h"
tools/Platform.cpp|#include "platform/qt/Settings.h"
app/Tool.cpp|#include "tools/DemoCenter.h"
app/Test.cpp|#include "tests/store/TestCenter.h"
doc/Bench.cpp|#include "bench/Rows.h"
store/Sqlite.cpp|#include <sqlite3.h>
tools/Sqlite.cpp|#include "sqlite3.h"
members/Form.h|#include "ui_MemberDlg.h"
members/FormFolder.h|#include "members/ui_MemberDlg.h"
tests/app/Form.h|#include "ui_MemberDlg.h"
store/Bare.cpp|#include "DAOWk.h"
app/Dots.cpp|#include "../doc/CorvanaDoc.h"
ui/Within.cpp|#include "ui/../app/MainFrame.h"
ui/Macro.cpp|#include FORM_HEADER
platform/net/Unknown.cpp|#include <string>
store/NoPragma.h|#include <string>
tests/ui/NoPragma.h|// #pragma once
app/fine.cpp|#include "app/fine.h"\n#include "ui_MainFrame.h"\n#include "members/A.h"\n#include "doc/A.h"\n#include "ui/A.h"\n#include "store/A.h"\n#include "platform/qt/A.h"\n#include "platform/db/A.h"\n#include <QWidget>
members/fine.cpp|#include "members/A.h"\n#include "doc/A.h"\n#include "fine.moc"\n// #include "app/A.h"
store/fine.h|#include "store/A.h"\n#include "platform/db/A.h"\n#include <queue>\n#include <sys/stat.h>
platform/db/fine.cpp|#include <sqlite3.h>
tools/fine.cpp|#include "tools/A.h"\n#include "store/A.h"\n#include "platform/db/A.h"\n#include <CLI/CLI.hpp>
tests/app/fine.cpp|#include "app/A.h"\n#include "members/A.h"\n#include "tests/A.h"\n#include <sqlite3.h>\n#include <QTest>
CASES
    mkdir -p "$tree/empty"
    if (check "$tree/empty") 2>/dev/null; then
        echo "a folder without sources passes" >&2
        failures=$((failures + 1))
    fi
    [ "$failures" -eq 0 ]
}

case ${1:---help} in
    --self-test) self_test ;;
    --help) echo "usage: check_includes.sh FOLDER | --self-test" >&2 && exit 2 ;;
    *) check "$1" ;;
esac
