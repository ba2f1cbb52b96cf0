# Shortens ctest's output for a reader: passed tests become a running count, the rest stays.
/^ *[0-9]+\/[0-9]+ Test +#[0-9]+: .* +Passed +[0-9.]+ sec/ {
    if (++count % 250 == 0) {
        print "  " count " passed"
        fflush()
    }
    next
}
/^ +Start +[0-9]+: / { next }
{
    print
    fflush()
}
