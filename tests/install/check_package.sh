#!/usr/bin/env bash
# Builds the Debian package from a configured build and shows it working on this machine:
# it installs with apt-get (which brings its Qt 6 dependencies), dpkg -L lists the programs,
# the menu entry, the file type, the icons, the manual and the manual page, titron-cli runs
# from PATH on a sample, and a purge removes every file again.
# Installs and removes the package "titron" system-wide: run it as root on a machine that
# may change (a container, a test machine). Without root or apt-get it says so and exits 77.
# Usage: check_package.sh BUILD_DIR
set -euo pipefail

build=$(cd "${1:?usage: check_package.sh BUILD_DIR}" && pwd)

if [[ $(id -u) != 0 ]] || ! command -v apt-get >/dev/null || ! command -v dpkg >/dev/null; then
    echo "skipped: needs root, apt-get and dpkg (it installs and removes the package)"
    exit 77
fi
if dpkg -s titron >/dev/null 2>&1; then
    echo "titron is installed already; remove it first (this check would remove it)"
    exit 1
fi

echo "== building the package"
(cd "$build" && rm -f titron_*.deb && "${CPACK:-cpack}" -G DEB >/dev/null)
package=$(ls "$build"/titron_*.deb)
echo "$package"
dpkg-deb --field "$package" Package Version Architecture Depends

failed=0
fail() {
    echo "FAILED: $*"
    failed=1
}

echo "== installing with apt-get"
apt-get install -y "$package" >/tmp/titron-package-install.log 2>&1 ||
    { cat /tmp/titron-package-install.log; exit 1; }
trap 'apt-get purge -y titron >/dev/null 2>&1 || true' EXIT

echo "== dpkg -L titron"
listed=$(dpkg -L titron)
for file in /usr/bin/titron /usr/bin/titron-cli \
    /usr/share/applications/titron.desktop /usr/share/mime/packages/titron.xml \
    /usr/share/icons/hicolor/48x48/apps/titron.png /usr/share/icons/hicolor/scalable/apps/titron.svg \
    /usr/share/doc/titron/manual/index.html /usr/share/doc/titron/manual/report.png \
    /usr/share/man/man1/titron-cli.1 /usr/share/doc/titron/examples/spleen-a.tna; do
    if grep -qx "$file" <<<"$listed" && [[ -f $file ]]; then
        echo "  $file"
    else
        fail "not installed by the package: $file"
    fi
done
dependencies=$(dpkg-query --show --showformat='${Depends}' titron)
grep -q 'libqt6widgets6' <<<"$dependencies" || fail "no dependency on Qt 6 Widgets: $dependencies"

echo "== titron-cli from PATH"
[[ $(command -v titron-cli) == /usr/bin/titron-cli ]] || fail "titron-cli is not /usr/bin/titron-cli"
report=$(cd /tmp && titron-cli analyze /usr/share/doc/titron/examples/spleen-a.tna | tr -d '\r')
echo "$report" | sed -n '1,5p'
grep -q 'Frequency:           1 in 11,503' <<<"$report" || fail "titron-cli analyze gave no report"
man -w titron-cli >/dev/null 2>&1 || ! command -v man >/dev/null || fail "man finds no titron-cli"
if [[ -f /usr/share/mime/types ]]; then
    grep -qx 'text/x-titron-analysis' /usr/share/mime/types ||
        fail "the file type is not in the desktop's MIME database"
fi

echo "== apt-get purge titron"
files=$(dpkg -L titron | while read -r path; do [[ -d $path ]] || echo "$path"; done)
apt-get purge -y titron >/tmp/titron-package-remove.log 2>&1 ||
    { cat /tmp/titron-package-remove.log; exit 1; }
trap - EXIT
dpkg -s titron >/dev/null 2>&1 && fail "dpkg still knows titron"
left=0
while read -r path; do
    if [[ -e $path ]]; then
        fail "left behind: $path"
        left=1
    fi
done <<<"$files"
for directory in /usr/share/doc/titron; do
    [[ -e $directory ]] && fail "left behind: $directory"
done
[[ $left == 0 ]] && echo "  $(wc -l <<<"$files") files installed, none left"
command -v titron-cli >/dev/null && fail "titron-cli still on PATH"

if [[ $failed == 0 ]]; then
    echo "== the package installs, works and removes cleanly"
fi
exit "$failed"
