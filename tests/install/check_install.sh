#!/usr/bin/env bash
# Installs the build into a temporary prefix and checks that the programs, the desktop
# entry, the file type and the icons land where a desktop looks for them, and the manual
# (with every picture it shows) and the manual page where Help and man look for them.
# Usage: check_install.sh BUILD_DIR GUI_BUILT(1/0)
set -euo pipefail

build=$1
gui=$2
prefix=$(mktemp -d)
trap 'rm -rf "$prefix"' EXIT

"${CMAKE:-cmake}" --install "$build" --prefix "$prefix"

failed=0
expect() {
    if [[ ! -f $prefix/$1 ]]; then
        echo "missing: $1"
        failed=1
    fi
}

expect bin/titron-cli
[[ $gui == 1 ]] && expect bin/titron
expect share/applications/titron.desktop
expect share/mime/packages/titron.xml
for size in 16 32 48 64 128 256; do
    expect share/icons/hicolor/${size}x${size}/apps/titron.png
done
expect share/icons/hicolor/scalable/apps/titron.svg
manual=share/doc/titron/manual
expect $manual/index.html
for picture in $(grep -o 'src="[^"]*"' "$prefix/$manual/index.html" | sed 's/src="\(.*\)"/\1/'); do
    expect "$manual/$picture"
done
expect share/man/man1/titron-cli.1
expect share/doc/titron/examples/spleen-a.tna

for program in bin/titron-cli bin/titron; do
    if [[ -f $prefix/$program && ! -x $prefix/$program ]]; then
        echo "not executable: $program"
        failed=1
    fi
done

if command -v desktop-file-validate >/dev/null; then
    desktop-file-validate "$prefix/share/applications/titron.desktop" || failed=1
else
    echo "desktop-file-validate not found: desktop entry not validated"
fi

if command -v groff >/dev/null; then
    # Warnings (-ww) of the man macros or of the typesetter show a page that doesn't render.
    warnings=$(groff -man -Tutf8 -ww -z "$prefix/share/man/man1/titron-cli.1" 2>&1)
    if [[ -n $warnings ]]; then
        echo "titron-cli.1 does not render cleanly: $warnings"
        failed=1
    fi
else
    echo "groff not found: manual page not rendered"
fi

exit "$failed"
