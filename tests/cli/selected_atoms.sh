# Prints the numbers of the atoms that a selection names: those that --freeze marks.
file=$1
shift
for selection; do
    text=$(quor-gjf edit "$file" --freeze "$selection=7" 2>&1) && text=$(awk '/^-?[0-9]+ 1$/ {at = NR; next} at && !NF {exit} at && $2 == 7 {printf " %d", NR - at}' <<< "$text")
    echo "$selection:${text%%$'\n'*}"
done
