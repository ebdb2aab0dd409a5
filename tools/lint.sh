#!/usr/bin/env bash
# Checks formatting and runs the static analyser over every source of the project.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

mapfile -t sources < <(git ls-files '*.cpp' '*.h')
clang-format --dry-run --Werror "${sources[@]}"
printf 'formatting: %s files\n' "${#sources[@]}"

cmake --preset clang >build/lint-configure.log 2>&1 || { cat build/lint-configure.log >&2; exit 1; }
# Generated sources (resources, meta objects) must exist before the analyser reads what includes them.
cmake --build --preset clang --target help >/dev/null
mapfile -t units < <(git ls-files '*.cpp' | grep -v '^tests/')
printf '%s\n' "${units[@]}" | xargs -P "$(nproc)" -n 4 clang-tidy -p build/clang --quiet --warnings-as-errors='*' 2>&1 \
    | grep -v -E 'warnings? generated|^Suppressed|^Use -header-filter' || [[ ${PIPESTATUS[1]} -eq 0 ]]
printf 'clang-tidy: %s files\n' "${#units[@]}"
