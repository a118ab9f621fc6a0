#!/usr/bin/env bash
# Imports the schemas of well-known programs from their SQL, makes scripts of the models, runs these, and imports what
# they made into the same project: nothing may change. The schemas are fetched with apt-get into a
# temporary folder and go with it; MariaDB and PostgreSQL have to be installed.
#
# usage: scripts/import_round_trips.sh [KORVANE]
set -euo pipefail
cd "$(dirname "$0")/.."
korvane=$(realpath "${1:-build/dev/bin/korvane}")
export QT_QPA_PLATFORM=offscreen

folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
chmod 755 "$folder"
cd "$folder"

unpack() {
    apt-get download -o APT::Sandbox::User=root "$1" >/dev/null
    dpkg-deb -x "$1"_*.deb .
}
# name, database, file
schemas() {
    local share=usr/share
    unpack roundcube-core
    unpack cacti
    unpack icinga2-ido-mysql
    unpack icinga2-ido-pgsql
    unpack zabbix-server-mysql
    unpack zabbix-server-pgsql
    # Scripts do not quote names for all databases, so one column gets a name that can do without.
    sed -i 's/reply-to/reply_to/g' $share/roundcube/SQL/{sqlite,mysql,postgres}.initial.sql
    gunzip -kf $share/zabbix-server-{mysql,pgsql}/schema.sql.gz
    cat <<LIST
roundcube sqlite $share/roundcube/SQL/sqlite.initial.sql
roundcube mariadb $share/roundcube/SQL/mysql.initial.sql
roundcube postgresql $share/roundcube/SQL/postgres.initial.sql
cacti mariadb $share/cacti/conf_templates/cacti.sql
icinga2 mariadb $share/icinga2-ido-mysql/schema/mysql.sql
icinga2 postgresql $share/icinga2-ido-pgsql/schema/pgsql.sql
zabbix mariadb $share/zabbix-server-mysql/schema.sql
zabbix postgresql $share/zabbix-server-pgsql/schema.sql
LIST
}

failed=0
while read -r name database file; do
    project=${name}_$database.korv
    scripts=${database/mariadb/mysql}
    if ! told=$("$korvane" import "ddl:$file" --db "$database" "$project"); then
        failed=1
        continue
    fi
    "$korvane" export "$project" -y --no-check --db "$scripts" --relationships yes --schema full --path sql >/dev/null
    script=$(ls sql/"${name}_${database}_${scripts}"_*_full.sql)
    again=$("$korvane" import "ddl:$script" --db "$database" --skip-refused "$project" -n) || again="the scripts do not run"
    proven=$("$korvane" verify "$project" --db "$database" --relationships yes | tail -n 1) || failed=1
    printf '%-10s %-10s %s\n           again: %s\n           verify: %s\n' "$name" "$database" "${told##*$'\n'}" "${again%%$'\n'*}" "$proven"
    [[ $again == *": no changes"* ]] || failed=1
done < <(schemas)
exit $failed
