#!/usr/bin/env bash
# Has bench/check judge figures that are made up, and sees it tell each limit that is broken and each figure that is
# missing, and nothing else.
#
#   benchLimitsTest.sh ROOT
set -euo pipefail
root=$(cd "$1" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
tree=$work/tree
mkdir -p "$tree/bench" "$tree/build/linux/bench" "$tree/build/windows-x86/bench"
cp "$root/bench/check" "$root/bench/limits.awk" "$tree/bench/"

# figures PRESET [NAME VALUE ...]: figures that keep all limits, but for those that are named; a value of - leaves one out.
figures() {
    local preset=$1 shape size time logging
    shift
    {
        for shape in 1/1:1000 8/8:8000 64/16:100000 256/64:1600000 1000/100:10000000; do
            time=${shape#*:}
            for size in 10 1000 100000; do
                printf '%s %s\n' "Event/${shape%:*}/$size" "$time" "Floor/${shape%:*}/$size" "$time"
            done
        done
        for size in 10 1000 100000; do
            printf '%s %s\n' "SetAllowList/$size" 1000 "ListFloor/$size" 1000 "Match/$size" 200
        done
        for logging in off on; do
            for time in wall processor; do
                printf '%s\n' "ReplayLibrary/$logging/$time 1000"
                # The one in the middle counts.
                printf "Replay/%s/$logging/$time %s\n" table 9000 table 1900 table 100 json 1900 json 100 json 9000
            done
        done
        printf '%s\n' 'OneThread/8/8/1000 8000' 'TwoThreads/8/8/1000 8400' 'OneThreadFloor/8/8/1000 8000' \
            'TwoThreadsFloor/8/8/1000 8200' 'Record/event 2000' 'WriterRecord 900' 'AnswerSize 1000' \
            'PeakMemory 2000' 'Resident/100000 4000000' 'Resident/10000000 4000000'
    } | awk -v changes="$*" 'BEGIN { count = split(changes, part, " "); for (i = 1; i < count; i += 2) to[part[i]] = part[i + 1] }
        !($1 in to) { print; next }
        to[$1] != "-" { print $1, to[$1] }' > "$tree/build/$preset/bench/figures"
}

failures=0
# sees NAME EXIT_CODE BROKEN PATTERN: judges the figures of both builds; so many lines are marked as broken, or any number
# of them for a -, and one of what is printed is like PATTERN.
sees() {
    local seen=0 marked
    "$tree/bench/check" linux windows-x86 > "$work/output" 2>&1 || seen=$?
    marked=$(awk '/BROKEN$/ { ++count } END { print count + 0 }' "$work/output")
    [ "$3" != - ] || marked=-
    [ "$seen/$marked" = "$2/$3" ] && grep -qE -- "$4" "$work/output" && return 0
    failures=$((failures + 1))
    { echo "FAILED: $1" "  expected $2/$3 and $4, seen $seen/$marked"; cat "$work/output"; } >&2
}

# changed NAME EXIT_CODE BROKEN PATTERN PRESET CHANGES ...: the same with figures of one build changed.
changed() {
    local name=$1 code=$2 marked=$3 pattern=$4 preset=$5
    shift 5
    figures linux
    figures windows-x86
    figures "$preset" "$@"
    sees "$name, $preset" "$code" "$marked" "$pattern"
}

figures linux
figures windows-x86
sees "all limits kept" 0 0 '1000/100/100000 .* 1\.00  at most 1\.50$'
sees "of several samples of a replay the one in the middle" 0 0 'json rows, log on, in the library alone +1\.90 '

for preset in linux windows-x86; do
    changed "an event as dear as it may be" 0 0 '8/8/10 .* 1\.25  at most 1\.25$' "$preset" Event/8/8/10 10000
    changed "a dear event" 1 1 '8/8/10 .* 1\.26  at most 1\.25   BROKEN$' "$preset" Event/8/8/10 10080
    changed "a dear event of many rules" 1 1 '1000/100/1000 .* 1\.51  at most 1\.50   BROKEN$' "$preset" \
        Event/1000/100/1000 15100000
    changed "an event that grows with the list" 1 1 'N = 10\) at 1/1 .* 1\.31  at most +1\.30   BROKEN$' "$preset" \
        Event/1/1/10 900 Event/1/1/100000 1180
    changed "events that grow with the rules" 1 1 'T\(64, 16\), N = 1000 .* 20\.51 .*BROKEN$' "$preset" \
        Event/64/16/1000 78000
    changed "a dear allow list" 1 1 'SetAllowList, N = 1000 .* 1\.21 .*BROKEN$' "$preset" SetAllowList/1000 1210
    changed "a look-up that grows with the list" 1 1 'look-up of one rule.* 1\.31 .*BROKEN$' "$preset" Match/100000 262
    changed "a dear record" 1 1 'a record, in halves.*BROKEN$' "$preset" Record/event 2900
    changed "a large peak" 1 1 'peak of an event.* 3\.01 .*BROKEN$' "$preset" PeakMemory 3010
    changed "memory that is not given back" 1 1 'resident size.* 1\.02 .*BROKEN$' "$preset" Resident/10000000 4080000
    for missing in Event/64/16/1000 Floor/1/1/10 SetAllowList/10 ListFloor/100000 Match/10 Record/event WriterRecord \
        AnswerSize PeakMemory Resident/100000 Resident/10000000 OneThread/8/8/1000; do
        changed "a figure that is missing" 2 - "^$missing was not measured\$" "$preset" "$missing" -
    done
done
for what in table/off table/on json/off json/on; do
    name="${what%/*} rows, log ${what#*/}, in the library alone"
    changed "a replay as dear as it may be" 0 0 "$name +2\.00  at most +2\.00\$" linux "Replay/$what/processor" 2000
    changed "a dear replay" 1 1 "$name +2\.01 .*BROKEN\$" linux "Replay/$what/processor" 2010
    changed "a dear replay where nothing is promised" 0 0 "$name +2\.50  no limit" windows-x86 "Replay/$what/wall" 2500
    changed "a replay without a figure" 2 - "^Replay/$what/wall was not measured\$" windows-x86 "Replay/$what/wall" -
    changed "a replay without a figure" 2 - "^Replay/$what/processor was not measured\$" linux \
        "Replay/$what/processor" -
done
changed "two threads that gain too little" 1 1 'events on two threads.* 1\.78 .*BROKEN$' linux TwoThreads/8/8/1000 9000
changed "two threads that gain too little where nothing is promised" 0 0 '1\.00; no limit' windows-x86 \
    TwoThreads/8/8/1000 16000
changed "no second processor" 2 0 'were not measured: no second processor was free' linux TwoThreads/8/8/1000 -
changed "no second processor where nothing is promised" 0 0 'were not measured: no second processor was free' \
    windows-x86 TwoThreads/8/8/1000 -
figures linux
rm "$tree/build/windows-x86/bench/figures"
sees "a build that was not measured" 2 0 '^bench/check: no figures of windows-x86'

[ "$failures" -eq 0 ] || { echo "$failures failed" >&2; exit 1; }
