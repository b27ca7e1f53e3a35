#!/usr/bin/env bash
# Refreshes the German catalogues from the sources: the toolkit's from
# vn_toolkit/, the application's from app/. Texts that left the sources are
# dropped, new ones arrive unfinished; the script lists those at the end and
# exits 1 while any remain, so that they get a translation before a commit.
#
# Extra arguments are further source folders for the application catalogue.
#
#   tools/update_translations.sh
set -euo pipefail
cd "$(dirname "$0")/.."

lupdate=/usr/lib/qt5/bin/lupdate
if [[ ! -x $lupdate ]]; then
    lupdate=$(command -v lupdate)
fi

"$lupdate" vn_toolkit -locations none -no-obsolete \
    -ts vn_toolkit/translations/vn_toolkit_de.ts
"$lupdate" app "$@" -locations none -no-obsolete \
    -ts resources/translations/loxmere_de.ts

status=0
for ts in vn_toolkit/translations/vn_toolkit_de.ts resources/translations/loxmere_de.ts; do
    count=$(grep -c 'type="unfinished"' "$ts" || true)
    if [[ $count -ne 0 ]]; then
        echo "$ts: $count unfinished:"
        awk '/<message>/ { block = "" } { block = block $0 "\n" }
             /<\/message>/ && block ~ /type="unfinished"/ { printf "%s", block }' "$ts"
        status=1
    fi
done
exit $status
