# Stands in front of test-output.awk and test-failures.awk. Of a line that "ctest -V" printed:
#   number  of the test program that it is about; name[number] is what it is called
#   line    what the program printed
#   ended   whether ctest tells the program's end here

{ ended = 0 }

/^ *Start +[0-9]+: / {
    sub(":", "", $2)
    name[$2] = $3
    next
}

/^[0-9]+: / {
    number = $1
    sub(":", "", number)
    line = substr($0, length($1) + 2)
}

/^ *[0-9]+\/[0-9]+ Test +#[0-9]+: / {
    match($0, /#[0-9]+/)
    number = substr($0, RSTART + 1, RLENGTH - 1)
    ended = 1
}
