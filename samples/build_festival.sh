#!/usr/bin/env bash
# Rebuilds the sample project "festival" with its history: three tagged versions and the current state.
#
# usage: build_festival.sh [FOLDER]     (default: the current folder; an older festival.korv there is replaced)
# The program is taken from the environment variable KORVANE, else from the PATH.
set -euo pipefail
texts=$(cd "$(dirname "$0")" && pwd)
folder=${1:-.}
korvane=${KORVANE:-korvane}
project=$folder/festival.korv

rm -f -- "$project"
"$korvane" import "$texts/festival_v1.json" "$project"
"$korvane" tag "$project" -m "first season"
"$korvane" import "$texts/festival_v2.json" "$project"
"$korvane" tag "$project" -m "volunteers and badges"
"$korvane" import "$texts/festival_v3.json" "$project"
"$korvane" tag "$project" -m "gigs are called concerts"
"$korvane" import "$texts/festival.json" "$project"
