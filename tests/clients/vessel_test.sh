# A flange of a vessel has the pressures of the same flange by itself, and a report in its own units.
#   vessel_test.sh vessel three_elements_c SCRATCH_FOLDER
set -eu
vessel=$1 stand_alone=$2 folder=$3
mkdir -p "$folder"
cd "$folder"
rm -f report.txt
"$vessel" report.txt >output.txt
"$stand_alone" >stand_alone.txt
# The figure after a label of a report, where it first occurs.
figure() {
    sed -n "s/^.*$1 *\([0-9.]*\).*$/\1/p" "$2" | head -n 1
}
mawp=$(LC_ALL=C figure 'Estimated M.A.W.P. ( Operating )' stand_alone.txt)
[ -n "$mawp" ]
grep -F "MAWP $mawp psi" output.txt
LC_ALL=C grep -a '^ Item: Node 10 to 20 *$' report.txt
LC_ALL=C grep -a '^ Flange Outside Diameter  *A  *482.600  mm *$' report.txt
LC_ALL=C grep -a '^ Flange Input Data Values  *Description: Manway *$' report.txt
[ "$(wc -l <report.txt)" -gt 150 ]
# Every record is a blank, 100 columns and the style marks when any is set.
[ -z "$(LC_ALL=C awk 'length($0) != 101 && length($0) != 113 || substr($0, 1, 1) != " "' report.txt)" ]
# A file that can't be written is reported.
if "$vessel" no/such/folder/report.txt >refused.txt 2>&1; then exit 1; fi
grep -F 'cannot write no/such/folder/report.txt' refused.txt
