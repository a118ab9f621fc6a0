#!/usr/bin/env bash
# Builds the program and exports the sample project for every database.
#
# usage: demo.sh [FOLDER]     FOLDER receives the project and the scripts (default: out)
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install_dependencies.sh
cmake --preset release >/dev/null
cmake --build --preset release --target korvane KorvGenericDDLExport manual translations

folder=${1:-out}
mkdir -p "$folder"
folder=$(cd "$folder" && pwd)
export KORVANE=$PWD/build/release/bin/korvane
samples/build_festival.sh "$folder"
for database in generic sqlite mysql postgresql oracle mssqlserver; do
    "$KORVANE" export "$folder/festival.korv" -y --path "$folder/sql" --db $database --schema both \
        --relationships yes >"$folder/export_$database.log"
done
echo
echo "The scripts:"
ls -1 "$folder"/sql/*.sql
echo
echo "From version 2 to version 3, for PostgreSQL ($folder/sql/festival_postgresql_db_schema_v2_to_v3.sql):"
echo
cat "$folder/sql/festival_postgresql_db_schema_v2_to_v3.sql"
