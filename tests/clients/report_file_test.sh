# The report of an element under external pressure is the same in a file as in the line store.
#   report_file_test.sh three_elements_c SCRATCH_FOLDER
set -eu
mkdir -p "$2"
cd "$2"
rm -f report.txt
"$1" >store.out
"$1" "$(dirname "$1")" report.txt >file.out
# After the last number: each line with a bar before it.
sed -n '/^external fail_ca/,$p' store.out | tail -n +2 >expected
# A record: a blank, 100 columns, and the style marks when any is set.
cut -b 2-101 report.txt | sed -e 's/ *$//' -e 's/^/|/' >actual
diff -a expected actual
[ "$(wc -l <actual)" -gt 20 ]
# All but the report is unchanged.
grep -a -v -x -F -f expected store.out >numbers || true
grep -a -v -x -F -f expected file.out | diff -a numbers -
