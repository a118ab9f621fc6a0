#!/usr/bin/env bash
# Tries the packages that scripts/package.sh made: lintian finds no error in them, they hold what is listed, the archive of the sources
# makes the same bytes without git, in a fresh Debian they are installed, do what the manual's ten minutes say, are what the sample
# plug-in is built with, and are removed without a trace.
#
# usage: test_packages.sh [FOLDER]     (default: build/packages) as root; downloads what they depend on
set -euo pipefail
cd "$(dirname "$0")/.."
packages=$(realpath "${1:-build/packages}")
scripts/install_dependencies.sh package
work=$(mktemp -d)
root=$work/root
is_installed=
# Whatever came of the trial, nothing of it is left on the machine.
clean_up() {
    if [ -n "$is_installed" ]; then
        remove || echo "The packages could not be removed again: ${names[*]}" >&2
    fi
    rm -rf "$work"
}
trap clean_up EXIT

echo "== lintian"
lintian --fail-on error "$packages"/*.deb

echo "== contents"
for deb in "$packages"/*.deb; do
    dpkg-deb --fsys-tarfile "$deb" | tar --list
done | sed --quiet --regexp-extended 's#^\./usr/(.*[^/])$#\1#p' |
    sed --regexp-extended 's#^lib/[a-z0-9_]+-linux-gnu/#LIB/#; s#Targets-[a-z]+\.cmake#Targets-BUILD.cmake#; s#zsh/vendor-completions/#zsh/ZSH/#' |
    grep --invert-match --extended-regexp '^share/doc/[a-z0-9-]+/(copyright|changelog\.gz)$' | sort >"$work/packaged"
grep --invert-match '^#' cmake/installed_files.txt | sort >"$work/listed"
diff "$work/listed" "$work/packaged"

echo "== the same again, from the archive of the sources"
mkdir "$work/sources"
tar --extract --file "$packages"/korvane-*.tar.gz --directory "$work/sources" --strip-components 1
"$work/sources/scripts/package.sh" "$work/again" >"$work/log" 2>&1 || { tail "$work/log"; exit 1; }
for deb in "$packages"/*.deb; do
    cmp "$deb" "$work/again/$(basename "$deb")"
done

echo "== a fresh Debian"
# Where no other root can be made, the machine itself is used, and said so.
if mmdebstrap --quiet --variant=apt bookworm "$root" >"$work/log" 2>&1; then
    # The caller's folder of temporary files is not there.
    inside() { env --unset=TMPDIR chroot "$root" "$@"; }
    place=/tmp
else
    tail -n 3 "$work/log"
    echo "No fresh root can be made here: the packages go into this machine."
    root=
    inside() { "$@"; }
    place=$work
    export TMPDIR=$work # Qt keeps a folder there
    chmod 755 "$work" # apt reads packages as somebody else
fi
names=()
for deb in "$packages"/*.deb; do
    names+=("$(dpkg-deb --field "$deb" Package)")
done
inside dpkg-query --status "${names[@]}" >"$work/log" 2>/dev/null || true
if grep --quiet '^Status: install ok' "$work/log"; then
    echo "Some of these are installed in this machine already; remove them first: ${names[*]}" >&2
    exit 1
fi
remove() {
    inside env DEBIAN_FRONTEND=noninteractive apt-get purge -y -qq "${names[@]}" >"$work/log" 2>&1 && is_installed=
}
files() {
    inside find /etc /opt /usr /var/lib /home /root -not -path '/var/lib/apt/*' -not -path '/var/lib/dpkg/*' -not -path '*/__pycache__*' | sort
}
mkdir -p "$root$place/packages"
cp "$packages"/*.deb "$root$place/packages"
inside apt-get update -qq
# What they depend on stays, so that what is left afterwards is theirs.
depends=$(for deb in "$packages"/*.deb; do
    dpkg-deb --field "$deb" Depends
done | tr ',' '\n' | sed --regexp-extended 's/\(.*//; s/\|.*//; s/ //g' | grep --invert-match --extended-regexp 'korvane|^$' | sort -u)
# shellcheck disable=SC2086 # a list of words
inside env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends $depends sqlite3 graphviz bash-completion build-essential cmake >"$work/log" 2>&1
files >"$work/before"

echo "== install"
debs=("$packages"/*.deb)
is_installed=yes
inside env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${debs[@]/#"$packages"/"$place/packages"}" \
    >"$work/log" 2>&1 || { cat "$work/log"; exit 1; }
inside korvane --version

echo "== ten minutes"
# The shell of the manual's chapter, each block as a person would type it.
awk '/^## /{chapter=$0} /^```sh$/{if (chapter ~ /Ten minutes/) inside=1; next} /^```/{inside=0} inside' docs/manual.md >"$work/ten_minutes.sh"
test -s "$work/ten_minutes.sh"
mkdir "$root$place/shop"
cp "$work/ten_minutes.sh" "$root$place/shop.sh"
inside env HOME="$place" bash -c "cd '$place/shop' && bash -ex ../shop.sh"

echo "== a plug-in of somebody else"
inside cmake -S /usr/share/korvane/samples/plugin -B "$place/dictionary" >"$work/log" 2>&1 || { cat "$work/log"; exit 1; }
inside cmake --build "$place/dictionary" >"$work/log" 2>&1 || { cat "$work/log"; exit 1; }
inside env KORVANE_PLUGIN_PATH="$place/dictionary" korvane export "$place/shop/shop.korv" --plugin MarkdownDictionary
grep '^Table' "$root$place/shop/shop.md"

echo "== remove"
remove
files >"$work/after"
diff "$work/before" "$work/after"
echo "The packages were installed, used and removed${root:+ in a fresh Debian}."
