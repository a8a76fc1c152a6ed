#!/usr/bin/env bash
# The engine's benchmarks beside the same work done by the sqlite3 shell alone, on the same
# file of 100,000 cards:
#   bench/dao/compare_with_sqlite3.sh BUILD_DIR
# Runs bench_dao (which writes the file), then times each task in the shell with ".timer on".
set -euo pipefail
build=${1:?build directory with bench/dao/bench_dao}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export QUORBIN_BENCH_DAO_DIR=$work

"$build/bench/dao/bench_dao" --benchmark_out="$work/engine.json" --benchmark_out_format=json \
    >/dev/null
# The card file's import and export of a class list, five runs each, medians.
QUORBIN_BENCH_CARDS_DIR=$work "$build/bench/cards/bench_cards" --benchmark_repetitions=5 \
    --benchmark_report_aggregates_only=true --benchmark_out="$work/cards.json" \
    --benchmark_out_format=json >/dev/null
cards=$work/cards.qnd

timed() { # label, then SQL for the shell; prints the shell's own time for the SQL
    # Run twice in one session with the engine's page cache size; the second run is timed,
    # as the engine's benchmarks time a file that is already open.
    local label=$1 sql=$2
    local milliseconds
    milliseconds=$(printf '.output /dev/null\nPRAGMA cache_size = -16384;\n%s\n.timer on\n%s\n' \
        "$sql" "$sql" | sqlite3 "$cards" 2>&1 |
        awk '/Run Time/ { total += $4 } END { printf "%.1f", total * 1000 }')
    printf '%-22s sqlite3 %8s ms\n' "$label" "$milliseconds"
}

# Import: the same rows, one INSERT each, in one transaction, into the same empty table.
sqlite3 "$cards" .schema | grep -v '^CREATE TABLE "QSys' | grep -v "QSys" >"$work/schema.sql"
awk -v n=100000 'BEGIN {
    split("cat dog rabbit hamster goldfish tortoise bobcat pony parrot snake", kinds, " ");
    srand(2004);
    print "BEGIN;";
    for (i = 0; i < n; i++)
        printf "INSERT INTO Quorbin_Card (CardName, FreeText, Field1, Field7, Field8) VALUES " \
            "(\x27Card %06d\x27, \x27Notes about card %d\x27, \x27%s %d\x27, %d, %d);\n",
            i, i, kinds[i % 10 + 1], i, (i * 7919) % 100003, 36526 + i % 3653;
    print "COMMIT;";
}' >"$work/import.sql"
start=$(date +%s%N)
sqlite3 "$work/import.db" <"$work/schema.sql"
sqlite3 "$work/import.db" <"$work/import.sql"
printf '%-22s sqlite3 %8.1f ms\n' Import "$(( ($(date +%s%N) - start) / 100000 ))e-1"

timed OpenAndFirstCard 'SELECT * FROM Quorbin_Card ORDER BY CardName LIMIT 1;'
# What the engine's open does besides: the key of every card, in card-set order.
timed EveryKeyAndFirstCard 'SELECT rowid FROM Quorbin_Card ORDER BY CardName; SELECT * FROM Quorbin_Card ORDER BY CardName LIMIT 1;'
timed WalkCardSet 'SELECT * FROM Quorbin_Card ORDER BY CardName;'
timed LikeQuery "SELECT * FROM Quorbin_Card WHERE Field1 LIKE '%cat%' ORDER BY CardName;"
timed FindNextFromTop "SELECT CardName FROM Quorbin_Card WHERE Field1 LIKE '% 99999' ORDER BY CardName LIMIT 1;"
timed MinMax 'SELECT Min(Field7) AS MinValue, Max(Field7) AS MaxValue FROM Quorbin_Card;'
# The export: every user field of every card as quoted comma-separated text in a file.
export_sql=".headers on
.mode csv
.output $work/shell-export.csv
SELECT CardName, Field1, Field2, Field3, Field4, Field5, Field6, Field7,
    strftime('%d %m %Y', Field8 + 2415018.5) FROM Quorbin_Card ORDER BY CardName;
.output /dev/null
.mode list"
timed ExportText "$export_sql"

# The class list of bench_cards in the shell: .import into a temporary table, then one
# INSERT ... SELECT into the same card table (the file's own schema), and the same columns
# written out as CSV. Five runs of each; the medians of the shell's processor time (user and
# system), which a shared machine disturbs less than the time on the clock.
sqlite3 "$work/classlist.qnd" .schema | grep -v QSys >"$work/card-schema.sql"
median() { sort -n | awk '{ v[NR] = $1 } END { printf "%.1f", v[int((NR + 1) / 2)] }'; }
cpu_ms() { # runs the shell on the file $1 with the commands on standard input
    local TIMEFORMAT='%3U %3S'
    { time sqlite3 "$1" >/dev/null; } 2>&1 | awk '{ print ($1 + $2) * 1000 }'
}
import_sql=".import --csv --skip 1 $work/classlist.csv staging"
for run in 1 2 3 4 5; do
    rm -f "$work/shell-import.db"
    sqlite3 "$work/shell-import.db" <"$work/card-schema.sql"
    printf '%s\n' 'CREATE TEMP TABLE staging (Name, Kind, Colour, Owner, Notes, Town, Food);' \
        "$import_sql" 'BEGIN;' \
        'INSERT INTO Quorbin_Card (CardName, Field1, Field2, Field3, Field4, Field5, Field6)' \
        '    SELECT * FROM staging;' 'COMMIT;' | cpu_ms "$work/shell-import.db"
done | median | xargs printf '%-22s sqlite3 %8s ms (processor)\n' ImportCsv
for run in 1 2 3 4 5; do
    printf '%s\n' '.headers on' '.mode csv' ".output $work/shell-cards.csv" \
        'SELECT CardName, Field1, Field2, Field3, Field4, Field5, Field6 FROM Quorbin_Card' \
        '    ORDER BY CardName;' | cpu_ms "$work/shell-import.db"
done | median | xargs printf '%-22s sqlite3 %8s ms (processor)\n' ExportCsv

echo
echo "engine (bench_cards, medians of five runs):"
python3 - "$work/cards.json" <<'PYTHON'
import json, sys
for bench in json.load(open(sys.argv[1]))["benchmarks"]:
    if bench.get("aggregate_name") != "median":
        continue
    name = bench["run_name"].split("/")[0].removeprefix("BM_")
    unit = bench["time_unit"]
    print(f"{name:22s} engine  {bench['cpu_time']:8.1f} {unit} (processor), "
          f"{bench['real_time']:.1f} {unit} (clock)")
PYTHON

echo
echo "engine (bench_dao, real time):"
python3 - "$work/engine.json" <<'PYTHON'
import json, sys
for bench in json.load(open(sys.argv[1]))["benchmarks"]:
    name = bench["name"].split("/")[0].removeprefix("BM_")
    print(f"{name:22s} engine  {bench['real_time']:8.1f} {bench['time_unit']}")
PYTHON
