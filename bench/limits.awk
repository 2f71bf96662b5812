# The limits of bench/check, over the figures of one build.

function figure(name) {
    if (!(name in least)) {
        printf "%s was not measured\n", name
        missing = 1
        return 1
    }
    return least[name]
}

# The figure that came last, of one that is not to be the least.
function latest(name) {
    figure(name)
    return last[name]
}

# The value in the middle of those of a figure.
function median(name,   count, values, i, j, value) {
    figure(name)
    count = split(all[name], values, " ")
    for (i = 2; i <= count; ++i) {
        value = values[i] + 0
        for (j = i - 1; j > 0 && values[j] + 0 > value; --j) values[j + 1] = values[j]
        values[j + 1] = value
    }
    return count == 0 ? 1 : (values[int((count + 1) / 2)] + values[int(count / 2) + 1]) / 2
}

# A whole replay, in times of the library alone with the same events.
function replay(rows, logging, time) {
    return median("Replay/" rows "/" logging "/" time) / median("ReplayLibrary/" logging "/" time)
}

# Prints a ratio and whether it keeps its limit. `least` limits are for ratios that must not be smaller.
function limit(what, ratio, bound, isLeast) {
    kept = isLeast ? ratio >= bound : ratio <= bound
    printf "  %-52s %7.2f  at %s %5.2f%s\n", what, ratio, isLeast ? "least" : "most ", bound, kept ? "" : "   BROKEN"
    if (!kept) {
        broken = 1
    }
}

function event(shape, size) { return figure("Event/" shape "/" size) }

# What a second thread gains, or 0 where it was not measured since no second processor was free.
function gain(what) {
    if (!(("TwoThreads" what "/8/8/1000") in least)) return 0
    return 2 * figure("OneThread" what "/8/8/1000") / figure("TwoThreads" what "/8/8/1000")
}

BEGIN {
    shapeCount = split("1/1 8/8 64/16 256/64 1000/100", shapes, " ")
    sizeCount = split("10 1000 100000", sizes, " ")
    # A record of the first version that logged, in floors of an event of 8 rules with 8 machine ids.
    firstRecord["linux"] = 0.59
    firstRecord["windows-x86"] = 0.72
}

{
    if (!($1 in least) || $2 + 0 < least[$1]) {
        least[$1] = $2 + 0
    }
    last[$1] = $2 + 0
    all[$1] = all[$1] " " $2
}

END {
    printf "%s: an event beside its floor\n", preset
    printf "  %-12s %12s %12s %8s\n", "R, M, N", "event", "floor", "ratio"
    for (s = 1; s <= shapeCount; ++s) {
        for (n = 1; n <= sizeCount; ++n) {
            name = shapes[s] "/" sizes[n]
            # The floor does not depend on the list: all samples of a shape are samples of the same work.
            floor = figure("Floor/" shapes[s] "/" sizes[1])
            for (other = 2; other <= sizeCount; ++other) {
                sample = figure("Floor/" shapes[s] "/" sizes[other])
                if (sample < floor) floor = sample
            }
            bound = s <= 3 ? 1.25 : 1.5
            ratio = event(shapes[s], sizes[n]) / floor
            printf "  %-18s %9.1f us %9.1f us %6.2f  at most %.2f%s\n", name, event(shapes[s], sizes[n]) / 1000,
                floor / 1000, ratio, bound, ratio <= bound ? "" : "   BROKEN"
            if (ratio > bound) broken = 1
        }
    }
    printf "%s: growth\n", preset
    for (n = 1; n <= sizeCount; ++n) {
        limit("T(256, 64) / T(64, 16), N = " sizes[n], event("256/64", sizes[n]) / event("64/16", sizes[n]), 20)
    }
    for (s = 1; s <= shapeCount; ++s) {
        limit("T(N = 100000) / T(N = 10) at " shapes[s], event(shapes[s], 100000) / event(shapes[s], 10), 1.3)
    }
    printf "%s: allow lists, beside parsing them and filling the map\n", preset
    for (n = 1; n <= sizeCount; ++n) {
        limit("SetAllowList, N = " sizes[n], figure("SetAllowList/" sizes[n]) / figure("ListFloor/" sizes[n]), 1.2)
    }
    printf "%s: two threads\n", preset
    # Wine's heap does not take two threads at once: nothing that allocates gains by a second one there.
    if (gain("") == 0) {
        print "  events on two threads were not measured: no second processor was free"
        if (preset == "linux") missing = 1
    } else if (preset == "linux") {
        limit("events on two threads, in events on one", gain(""), 1.8, 1)
    } else {
        printf "  events on two threads, in events on one %.2f; no limit under Wine\n", gain("")
    }
    if (gain("Floor") != 0) printf "  of the floor %.2f\n", gain("Floor")
    limit("look-up of one rule, N = 100000 / N = 10", figure("Match/100000") / figure("Match/10"), 1.3)
    printf "%s: log records\n", preset
    printf "  %.0f ns for a record of an event, of which the logger's own %.0f ns are\n", figure("Record/event"),
        figure("WriterRecord")
    limit("a record, in halves of one of the first version",
          2 * figure("Record/event") / figure("Floor/8/8/10") / firstRecord[preset], 1)
    printf "%s: a replay by mordhost, beside the library alone with the same events\n", preset
    rowKinds = split("table json", rows, " ")
    settings = split("off on", logging, " ")
    for (l = 1; l <= settings; ++l) {
        printf "  log %-3s  %.1f us an event by the library alone\n", logging[l],
            median("ReplayLibrary/" logging[l] "/wall") / 1000
        for (r = 1; r <= rowKinds; ++r) {
            what = rows[r] " rows, log " logging[l]
            # Under Wine the processor's time is not to be had.
            if (preset == "linux") {
                limit(what ", in the library alone", replay(rows[r], logging[l], "processor"), 2)
                printf "  %-52s %7.2f\n", "  the same by the clock", replay(rows[r], logging[l], "wall")
            } else {
                printf "  %-52s %7.2f  no limit under Wine\n", what ", in the library alone",
                    replay(rows[r], logging[l], "wall")
            }
        }
    }
    printf "%s: memory\n", preset
    limit("peak of an event of (1000, 100), in answers", figure("PeakMemory") / figure("AnswerSize"), 3)
    limit("resident size after 10 million events / 100000", latest("Resident/10000000") / figure("Resident/100000"), 1.01)
    exit missing ? 2 : broken ? 1 : 0
}
