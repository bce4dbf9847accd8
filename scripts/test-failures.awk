# Reads what "ctest -V" printed, by way of ctest-lines.awk, and prints each test that failed, briefly: its name, and the first
# lines of where and why. Of a long log often no more is seen than the end, and there these stand.

/^[0-9]+: / {
    subject = line
    sub(/^\[[^\]]*\] */, "", subject)
    if (line ~ /^\[ RUN /) {
        test[number] = subject
        why[number] = ""
        lines[number] = 0
    } else if (line ~ /^\[ +OK \]/) {
        delete test[number]
    } else if (line ~ /^\[  FAILED  \].*ms\)$/) {
        printf "  %s: %s\n%s", name[number], subject, why[number]
        told[number] = 1
        delete test[number]
    } else if (line ~ /: Failure$/ || lines[number]) {
        sub(/^\/.*\/tests\//, "tests/", line)
        if (++lines[number] <= 6)
            why[number] = why[number] "      " line ORS
    } else if (!(number in test)) {
        before[number] = last[number]
        last[number] = "      " line ORS
    }
    next
}

ended && !/ Passed +[0-9.]+ sec/ {
    if (number in test)
        printf "  %s: %s did not end\n%s", name[number], test[number], why[number]
    else if (!told[number])
        printf "  %s\n%s%s", name[number], before[number], last[number]
}
