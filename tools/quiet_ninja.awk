# Shortens ninja's output for a reader: about twenty progress lines a build; everything else stays.
match($0, /^\[[0-9]+\/[0-9]+\] (Building|Linking|Automatic|Generating|Re-running|Running|Running utility)/) {
    split(substr($1, 2, length($1) - 2), at, "/")
    step = at[2] > 20 ? int(at[2] / 20) : 1
    if (at[1] % step == 0 || at[1] == at[2]) {
        n = split($NF, path, "/")
        print "  " $1 " " path[n]
        fflush()
    }
    next
}
{
    print
    fflush()
}
