#!/usr/bin/env bash
# lint.sh: checks formatting and the direction of includes, and runs the static analyser over every source but the tests'.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

usage() {
    printf 'usage: tools/lint.sh\n'
    printf 'Checks the formatting of all sources, and analyses those that are not tests. It takes no arguments.\n'
}

case ${1:-} in
    '') ;;
    -h | --help) usage; exit 0 ;;
    *) usage >&2; exit 2 ;;
esac

mapfile -t sources < <(git ls-files '*.cpp' '*.h' '*.mm')
# What is macOS's own is analysed by ./dev check-macos, which has its headers.
mapfile -t analysed < <(git ls-files '*.cpp' | grep -v -e '^tests/' -e '^platform/macos/')
((${#sources[@]} && ${#analysed[@]})) || { printf 'lint: git lists no sources here\n' >&2; exit 1; }

clang-format --dry-run --Werror "${sources[@]}"
printf 'formatting: %s files\n' "${#sources[@]}"

/usr/bin/python3 tools/check_includes.py "${sources[@]}"

mkdir -p build
cmake --preset clang -DAMPERLY_WARNINGS_AS_ERRORS=ON >build/lint-configure.log 2>&1 || { cat build/lint-configure.log >&2; exit 1; }
# Headers that the build generates.
cmake --build build/clang --target amperly_layer_shell >build/lint-generate.log 2>&1 || { cat build/lint-generate.log >&2; exit 1; }

units=$(/usr/bin/python3 tools/lint_units.py build/clang "${analysed[@]}")

# A unit may include sources: it is made of them.
tidy=(clang-tidy -p build/clang --quiet '--checks=-bugprone-suspicious-include')
# Findings come unit by unit; how many warnings the toolkit's headers gave says nothing.
if ! xargs -d '\n' -P "$(nproc)" -n 1 "${tidy[@]}" <<<"$units" >build/lint.log 2>&1; then
    grep -v -E '^[0-9]+ warnings? (and [0-9]+ errors? )?generated\.$|^[0-9]+ warnings? treated as error' build/lint.log >&2 || true
    printf 'lint: the analyser found something, or failed; all it said is in build/lint.log\n' >&2
    exit 1
fi
printf 'clang-tidy: %s files\n' "${#analysed[@]}"
