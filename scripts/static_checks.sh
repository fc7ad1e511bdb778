#!/usr/bin/env bash
# clang-tidy and cppcheck over all that is shipped and the host's <windows.h>: no finding is allowed. What is checked
# stands in .clang-tidy and below.
#
# usage: scripts/static_checks.sh BUILD-FOLDER    a folder of the preset host, which knows how each file is compiled
cd "$(dirname "$0")/.."
. scripts/common.sh
build=$1

# sources FOLDER...: the sources below these folders that the build compiles.
sources() {
    python3 - "$build/compile_commands.json" "$PWD" "$@" <<'PYTHON'
import json
import sys

commands, top, *folders = sys.argv[1:]
for command in json.load(open(commands)):
    if any(command["file"].startswith(f"{top}/{folder}/") for folder in folders):
        print(command["file"])
PYTHON
}

# tidy OPTION...: over the sources of standard input. Clang has warnings of its own: it does not know all of GCC's, and
# a field that only one build uses is none to report.
tidy() {
    xargs -P "$(nproc)" -n 2 clang-tidy -p "$build" --quiet --extra-arg=-Wno-unknown-warning-option \
        --extra-arg=-Wno-unused-private-field "$@" 2>/dev/null
}

passed=0
failed=0
count() {
    if [ "$1" -eq 0 ]; then passed=$((passed + 1)); else failed=$((failed + 1)); fi
}

status=0
sources library | tidy --checks='clang-analyzer-*' || status=$?
count $status
status=0
sources provider client faxbook platform text | tidy || status=$?
count $status

# The dialogs are Windows' only: no build of the host compiles them, and cppcheck needs no build.
status=0
cppcheck --enable=warning,performance,portability --std=c++20 --inline-suppr --quiet --error-exitcode=1 \
    -j "$(nproc)" -D'STDAPI_(type)=type' -I library -I provider -I faxbook -I include -I platform -I . \
    --suppress=useInitializationList library provider client dialogs faxbook platform text 2>&1 || status=$?
count $status

echo "$passed passed, $failed failed"
[ "$failed" -eq 0 ]
