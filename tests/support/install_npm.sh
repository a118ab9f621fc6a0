#!/bin/sh
# Installs what the package-lock.json of a folder names into a folder of the build tree, once for each state of that file.
# Status 77 when it cannot be had here: no npm, no network, or none that is trusted.
#
# usage: install_npm.sh FOLDER-OF-LOCK FOLDER
set -u
here=$1
folder=$2
mkdir -p "$folder" || exit 1
cmp -s "$here/package-lock.json" "$folder/installed.json" && exit 0
if ! command -v node >/dev/null || ! command -v npm >/dev/null; then
    echo "node and npm are not installed"
    exit 77
fi
cp "$here/package.json" "$here/package-lock.json" "$folder" && cd "$folder" || exit 1
rm -f installed.json
if npm ci --no-audit --no-fund --ignore-scripts >npm.log 2>&1; then
    cp package-lock.json installed.json
    exit
fi
cat npm.log
grep -Eq 'ENOTFOUND|EAI_AGAIN|ECONNREFUSED|ECONNRESET|ETIMEDOUT|CERT_|_CERT|UNABLE_TO_VERIFY|ENETUNREACH|EHOSTUNREACH' npm.log && exit 77
exit 1
