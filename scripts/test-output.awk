# Reads what "ctest -V" prints, by way of ctest-lines.awk, and prints what is worth reading of it:
#   - which test programs run and how they ended; now and then, how many tests one of them has passed;
#   - all that a failed one printed, but for its tests that passed;
#   - at the end, what is left of one that did not end.
# Several of them may print by turns, so each names its kind of test.

# print_now: nobody waits for a full buffer.
function print_now(text) {
    print kind ": " text
    fflush()
}

/^[0-9]+: / {
    if (line ~ /^\[=+\] Running [0-9]+ test/) {
        split(line, words, " ")
        total[number] = words[3]
    }
    if (line ~ /^\[ RUN /)
        test[number] = line
    else if (number in test)
        test[number] = test[number] ORS line
    else if (line !~ /^\[-+\]/)
        said[number] = said[number] line ORS
    if (line ~ /^\[ +OK \]/) {
        delete test[number]
        passed[number]++
        if (systime() - told >= 20) {
            told = systime()
            print_now(sprintf("  %s: %d of %d", name[number], passed[number], total[number]))
        }
    } else if (line ~ /^\[  FAILED  \].*ms\)$/) {
        said[number] = said[number] test[number] ORS
        delete test[number]
    }
    next
}

ended {
    if ($0 !~ / Passed +[0-9.]+ sec/)
        printf "%s", said[number] (number in test ? test[number] ORS : "")
    print_now($0)
    delete said[number]
    delete test[number]
    next
}

/^(test [0-9]+|UpdateCTestConfiguration|Constructing a list|Done constructing|Updating test list|Checking test dependency|Done checking)/ || /^$/ {
    next
}

{ print_now($0) }

END {
    for (number in said)
        printf "%s", said[number] (number in test ? test[number] ORS : "")
}
