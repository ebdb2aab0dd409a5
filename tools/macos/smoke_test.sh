#!/usr/bin/env bash
# smoke_test.sh APPLICATION: starts the application on this Mac as a user does, and looks whether it lives, has no place
# in the Dock, opens again, and quits when it is asked to.
set -euo pipefail

application=$(cd "$1" && pwd)
name=Amperly
stamp=$(mktemp) # crash reports from before are not about this
said=$(mktemp)
trap 'rm -f "$stamp" "$said"' EXIT

fail() { printf 'smoke test: %s\n' "$*" >&2; exit 1; }
running() { pgrep -x "$name" >/dev/null; }

# waits_for CONDITION...: until it holds, but no longer than 20 seconds.
waits_for() {
    local try
    for try in {1..40}; do
        if "$@"; then return 0; fi
        sleep 0.5
    done
    return 1
}

running && fail "it runs already"
open "$application"
waits_for running || fail "it did not start"
sleep 5
running || fail "it did not live for five seconds"
lsappinfo info -only ApplicationType "$name" | grep -q UIElement || fail "it is a regular application"

open "$application" # shows the settings
sleep 2
running || fail "it did not survive being opened again"

gone() { ! running; }
# By its path: there may be other copies of it on this Mac.
if osascript -e "tell application \"$application\" to quit" 2>"$said"; then
    waits_for gone || fail "it did not quit"
elif grep -q -- '(-1743)' "$said"; then
    # Where nobody is there to allow one program to steer another.
    printf 'smoke test: not allowed to ask it to quit, so that was not tried\n'
    process=$(pgrep -x "$name") || fail "it is gone before its time"
    kill "$process"
    waits_for gone || fail "it did not end"
else
    fail "it could not be asked to quit: $(cat "$said")"
fi
reports=$HOME/Library/Logs/DiagnosticReports
if [[ -d $reports ]] && find "$reports" -name "$name-*" -newer "$stamp" | grep -q .; then fail "it left a crash report"; fi
printf 'smoke test: passed\n'
