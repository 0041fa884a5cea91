#!/usr/bin/env bash
# The folders of the core include one another one way only: the folder graph of
# #include "folder/..." lines has no loop, analysis/ reaches only vocabulary/, vocabulary/
# reaches nothing, and no Qt header is included outside platform/qt/ and the window program.
# Usage: check_includes.sh SOURCE_DIR
set -euo pipefail
cd "$1"

folders=(vocabulary analysis platform session entry documents comparison shell platform/qt app)
edges=$(mktemp)
trap 'rm -f "$edges"' EXIT
status=0

violations=$(for folder in "${folders[@]}"; do
    for file in "$folder"/*.h "$folder"/*.cpp; do
        [ -e "$file" ] || continue
        sed -n 's/^#include "\(.*\)\/[^/]*"$/\1/p' "$file" | sort -u | while read -r target; do
            [ "$target" = "$folder" ] && continue
            echo "$folder $target" >>"$edges"
            case "$folder" in
            vocabulary) echo "$file includes $target/: vocabulary/ includes only itself" ;;
            analysis) [ "$target" = vocabulary ] ||
                echo "$file includes $target/: analysis/ includes only vocabulary/" ;;
            esac
        done
    done
done)
if [ -n "$violations" ]; then
    echo "$violations" >&2
    status=1
fi

if ! sort -u "$edges" | tsort >/dev/null 2>&1; then
    echo "the folders include each other in a loop:" >&2
    sort -u "$edges" | tsort 2>&1 >/dev/null | sed 's/^/  /' >&2
    status=1
fi

qt=$(grep -lE '^#include <Q' -r --include='*.h' --include='*.cpp' \
    vocabulary analysis platform session entry documents comparison shell app |
    grep -vE '^(platform/qt/|app/titron_main\.cpp$)' || true)
if [ -n "$qt" ]; then
    echo "Qt headers outside platform/qt/:" >&2
    echo "$qt" | sed 's/^/  /' >&2
    status=1
fi
exit $status
