#!/usr/bin/env bash
# fuzz.sh BUILD_DIR SECONDS: runs every fuzz target for a while; fails at the first finding.
set -euo pipefail
build=$1
seconds=$2
found=0
for target in "$build"/tests/fuzz/*_fuzz; do
    [[ -x $target ]] || continue
    found=$((found + 1))
    corpus=$build/corpus/$(basename "$target")
    mkdir -p "$corpus"
    printf '%s, %s s\n' "$(basename "$target")" "$seconds"
    "$target" -max_total_time="$seconds" -timeout=5 -rss_limit_mb=2048 -print_final_stats=0 -verbosity=0 \
        -artifact_prefix="$build/" "$corpus"
done
((found)) || { printf 'fuzz: no targets were built in %s\n' "$build" >&2; exit 1; }
printf '%s fuzz targets found nothing\n' "$found"
