#!/usr/bin/env bash
# smoke_test.sh APPLICATION: starts the application on this Mac as a user does, and looks whether it lives, has no place
# in the Dock, opens again, and quits when it is asked to.
set -euo pipefail

application=$1
name=Amperly

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
if osascript -e "tell application id \"io.github.amperly.Amperly\" to quit"; then
    waits_for gone || fail "it did not quit"
else
    # Where nobody is there to allow one program to steer another.
    printf 'smoke test: not allowed to ask it to quit, so that was not tried\n'
    kill "$(pgrep -x "$name")"
fi
if ls -t "$HOME/Library/Logs/DiagnosticReports/" 2>/dev/null | grep -q "^$name-"; then fail "it left a crash report"; fi
printf 'smoke test: passed\n'
