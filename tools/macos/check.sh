#!/usr/bin/env bash
# check.sh: all that Linux can tell about the macOS back end. It needs what packaging/debian/macos.txt lists.
#   check.sh            every check
#   check.sh CHECK...   those named: fakes, mutations, cross, bundle, analysis
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.."

llvm=/usr/lib/llvm-19/bin
bundle=build/macos-cross/app/Amperly.app

say() { printf '\033[1m%s\033[0m\n' "$*" >&2; }
fail() { printf 'check-macos: %s\n' "$*" >&2; exit 1; }

# quietly LOG COMMAND...: shows what a command said only if it failed.
quietly() {
    local log=build/$1
    shift
    "$@" >"$log" 2>&1 || { cat "$log" >&2; fail "failed: $*"; }
}

# The back end over fakes of its frameworks, with address and undefined-behaviour checks.
check_fakes() {
    say "Running the back end over its fakes"
    quietly macos-fakes.log cmake --preset macos-fakes
    cmake --build --preset macos-fakes --target amperly_macos_tests
    ctest --test-dir build/macos-fakes -L macos -j"$(nproc)" --output-on-failure --no-tests=error >build/macos-tests.log || {
        grep -vE '^ *(Start|[0-9]+/[0-9]+ Test .* Passed)' build/macos-tests.log >&2
        fail "tests fail"
    }
    grep 'tests passed' build/macos-tests.log
}

# Whether those tests notice mistakes.
check_mutations() {
    say "Making mistakes, to see the tests notice"
    [[ -f build/macos-fakes/build.ninja ]] || check_fakes
    /usr/bin/python3 tools/macos/mutations.py build/macos-fakes
}

# All of the program for arm64, as the build on a Mac takes it, with warnings as errors.
check_cross() {
    say "Compiling everything for arm64 macOS"
    quietly macos-cross.log cmake --preset macos-cross
    cmake --build --preset macos-cross
}

# The bundle, as far as there is one without the toolkit's libraries.
check_bundle() {
    say "Looking into the bundle"
    [[ -d $bundle ]] || check_cross
    local plist=$bundle/Contents/Info.plist key value
    plistutil -i "$plist" -f xml >/dev/null || fail "Info.plist is no property list"
    for key in CFBundleIdentifier=io.github.amperly.Amperly CFBundleExecutable=Amperly CFBundlePackageType=APPL \
        LSMinimumSystemVersion=13.3 NSPrincipalClass=NSApplication CFBundleIconFile=Amperly.icns \
        "CFBundleShortVersionString=$(sed -n 's/^project(Amperly VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)"; do
        value=$(sed -n "/<key>${key%%=*}<\/key>/{n;s/.*<string>\(.*\)<\/string>.*/\1/p}" "$plist")
        [[ $value == "${key#*=}" ]] || fail "Info.plist: ${key%%=*} is '$value', not '${key#*=}'"
    done
    for key in LSUIElement NSHighResolutionCapable; do
        sed -n "/<key>$key<\/key>/{n;p}" "$plist" | grep -q '<true/>' || fail "Info.plist: $key is not true"
    done
    [[ $(head -c4 "$bundle/Contents/Resources/Amperly.icns") == icns ]] || fail "the icon is no icns file"
    "$llvm/llvm-objdump" --macho --private-headers "$bundle/Contents/MacOS/Amperly" >build/macos-headers.log
    grep -q 'ARM64' build/macos-headers.log || fail "the program is not for arm64"
    grep -A4 LC_BUILD_VERSION build/macos-headers.log | grep -q 'minos 13.3' || fail "the program is not for macOS 13.3"

    # Only the toolkit's symbols and those of the C++ and C libraries may be open; anything else is a source that
    # the build leaves out, or a call that the lists in tools/macos/cross/stubs don't have.
    local open
    open=$("$llvm/llvm-nm" -m --undefined-only "$bundle/Contents/MacOS/Amperly" | grep 'dynamically looked up' |
        awk '{for (i = 1; i <= NF; ++i) if ($i == "external") print $(i + 1)}' |
        grep -vE '^(__Z|___|__Unwind|_objc_|__NSConcrete|__Block|_[a-z0-9_]+$)' || true)
    [[ -z $open ]] || fail "these symbols are nobody's: $open"
    open=$("$llvm/llvm-nm" --undefined-only "$bundle/Contents/MacOS/Amperly" | grep amperly || true)
    [[ -z $open ]] || fail "the program lacks parts of its own: $open"
}

# The static analyser's checks for Apple's frameworks, over what is macOS's own.
check_analysis() {
    say "Analysing what is macOS's own"
    [[ -f build/macos-cross/compile_commands.json ]] || quietly macos-cross.log cmake --preset macos-cross
    /usr/bin/python3 tools/macos/analyse.py build/macos-cross
}

checks=("$@")
((${#checks[@]})) || checks=(fakes mutations cross bundle analysis)
for check in "${checks[@]}"; do
    case $check in
        fakes | mutations | cross | bundle | analysis) "check_$check" ;;
        *) fail "there is no check '$check'" ;;
    esac
done
say "Nothing found."
