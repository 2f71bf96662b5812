#!/usr/bin/env bash
# Has scripts/coverage count a small tree by stand-ins of the compiler's tools, and sees it fail for each kind of fault
# and for no other.
#
#   coverageTest.sh ROOT
set -euo pipefail
root=$(cd "$1" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
tree=$work/tree
mkdir -p "$tree/scripts" "$work/tools"
cp "$root/scripts/coverage" "$tree/scripts/"

# A profile holds the build id of its program and what was counted.
cat > "$work/tools/llvm-profdata-19" << 'END_OF_TOOL'
#!/usr/bin/env bash
case "$1" in
show) echo "Binary IDs:"; head -n 1 "$3" ;;
merge) tail -n +2 "$5" > "$4" ;; # merge -sparse -o DESTINATION SOURCE
esac
END_OF_TOOL
cat > "$work/tools/llvm-cov-19" << 'END_OF_TOOL'
#!/usr/bin/env bash
[ ! -s "$DUMP" ] || echo "warning: 2 functions have mismatched data" >&2
[ "${!#}" != -dump ] || cat "$DUMP" >&2
if [ -s "$3" ]; then cat "$3"; else echo "error: no coverage data found" >&2; exit 1; fi
END_OF_TOOL
chmod +x "$work"/tools/*
export PATH=$work/tools:$PATH DUMP=$work/dump

write() { mkdir -p "$tree/$(dirname "$1")" && printf '%s\n' "$2" > "$tree/$1"; }

# program NAME ID FUNCTION ...: a program whose build id consists of the one digit ID, and the profile of its run.
program() {
    local name=$1 id=$2 IFS=,
    shift 2
    printf '\x7fELF\x04\0\0\0\x14\0\0\0\x03\0\0\0GNU\0' > "$tree/build/$name"
    printf "%0.s\\x$id$id" {1..20} >> "$tree/build/$name"
    chmod +x "$tree/build/$name"
    { printf "%0.s$id" {1..40}; echo; [ $# -eq 0 ] || echo "{\"data\": [{\"functions\": [$*]}]}"; } \
        > "$tree/build/profiles/$name.profraw"
}

# counted NAME FILE TRUE FALSE [MCDC]: with a condition in its first line that was so often true and false.
counted() {
    echo "{\"name\": \"$1\", \"filenames\": [\"$tree/$2\"], \"regions\": [[1, 1, 1, 9, 1, 0, 0, 0]]," \
        "\"branches\": [[1, 5, 1, 8, $3, $4, 0, 0, 4]], \"mcdc_records\": [[1, 5, 1, 8, 0, 5, [${5:-true}]]]}"
}

# logs NAME FILE TRUE FALSE: with one log site in its second line.
logs() {
    echo "{\"name\": \"$1\", \"filenames\": [\"$tree/$2\", \"$tree/src/logging/logMacros.h\"]," \
        "\"regions\": [[2, 5, 2, 14, 1, 0, 1, 1]], \"branches\": [[9, 3, 9, 8, $3, $4, 1, 0, 4]], \"mcdc_records\": []}"
}

# whole: a tree of which all is taken.
whole() {
    rm -rf "$tree/src" "$tree/build"
    mkdir -p "$tree/build/profiles"
    : > "$DUMP"
    : > "$tree/scripts/coverageUnreached"
    local folder
    for folder in frame mordRev/src logging text platform; do write "src/$folder/one.cpp" '    if (one) {'; done
    write src/native/chooseNativeX86.cpp '    if (x86) {'
    write src/native/chooseNativeX64.cpp '    if (x64) {'
    program oneTest 1 "$(counted one src/frame/one.cpp 1 1)" "$(counted two src/mordRev/src/one.cpp 1 1)" \
        "$(counted three src/logging/one.cpp 1 1)" "$(counted four src/text/one.cpp 1 1)" \
        "$(counted five src/platform/one.cpp 1 0 false)"
    program narrowTest 2 "$(counted six src/native/chooseNativeX86.cpp 1 1)"
    program wideTest 3 "$(counted six src/native/chooseNativeX64.cpp 1 1)"
    program otherTest 4 # nothing of src
}

failures=0
# sees NAME EXIT_CODE LINE ...: counts the tree, and looks for the lines in what is printed.
sees() {
    local name=$1 code=$2 seen=0 line
    shift 2
    "$tree/scripts/coverage" "$tree/build" > "$work/output" 2>&1 || seen=$?
    for line; do
        grep -qxF -- "$line" "$work/output" || { seen="$seen, without the line: $line"; break; }
    done
    [ "$seen" = "$code" ] && return 0
    failures=$((failures + 1))
    { echo "FAILED: $name" "  expected $code, seen $seen"; cat "$work/output"; } >&2
}

header=$(printf '%28s%9s%9s%9s%10s%10s%9s' '' branches missed excused taken promised MC/DC)
row() { printf '%-28s%9d%9d%9d%10s%10s%9s' "$@"; }

whole
sees "a tree of which all is taken, but for what nothing is promised of" 0 "$header" \
    "$(row src/frame 2 0 0 100.00% 100% 100.00%)" "$(row src/mordRev 2 0 0 100.00% 100% 100.00%)" \
    "$(row src/logging 2 0 0 100.00% 100% 100.00%)" "$(row src/text 2 0 0 100.00% 100% 100.00%)" \
    "$(row 'src/native, 32-bit caller' 2 0 0 100.00% 95% 100.00%)" \
    "$(row 'src/native, 64-bit caller' 2 0 0 100.00% 95% 100.00%)" "$(row src/platform 2 1 0 50.00% - 0.00%)"

# Below the promise
for folder in frame mordRev logging text; do
    whole
    write "src/$folder/rest.cpp" '    if (rest) {'
    program restTest 5 "$(counted rest "src/$folder/rest.cpp" 0 1)"
    sees "a branch of $folder that is never true" 1 \
        "src/$folder/rest.cpp:1: never true (src/$folder, rest): if (rest) {" \
        "$(row "src/$folder" 4 1 0 75.00% 100% 100.00%)" \
        "src/$folder: 75.00 % of the branches are taken, 100 % are promised"
done
whole
program wideTest 3 "$(counted six src/native/chooseNativeX64.cpp 1 0)"
sees "a caller that the other one does not stand for" 1 \
    "src/native/chooseNativeX64.cpp:1: never false (src/native, 64-bit caller, six): if (x64) {" \
    "$(row 'src/native, 32-bit caller' 2 0 0 100.00% 95% 100.00%)" \
    "$(row 'src/native, 64-bit caller' 2 1 0 50.00% 95% 100.00%)"
whole
functions=("$(counted last src/native/chooseNativeX86.cpp 1 0)")
for name in {a..i}; do functions+=("$(counted "$name" src/native/chooseNativeX86.cpp 1 1)"); done
program restTest 5 "${functions[@]}"
sees "more than 95 % of src/native" 0 "$(row 'src/native, 32-bit caller' 22 1 0 95.45% 95% 100.00%)"

whole
program oneTest 1 "$(counted one src/frame/one.cpp 1 1)" "$(counted two src/mordRev/src/one.cpp 1 1)" \
    "$(counted three src/logging/one.cpp 1 1)"
sees "a folder of which nothing was counted" 1 "src/text: 0.00 % of the branches are taken, 100 % are promised"

# What is added up, and what is told apart
whole
program firstTest 5 "$(counted same src/frame/one.cpp 1 0)"
program secondTest 6 "$(counted same src/frame/one.cpp 0 1)"
sees "the branches of two programs add up" 0 "$(row src/frame 4 0 0 100.00% 100% 100.00%)"
program secondTest 6 "$(counted another src/frame/one.cpp 0 1)"
sees "the instantiations of a template do not" 1 "$(row src/frame 6 2 0 66.67% 100% 100.00%)"
whole
write src/frame/one.h '    if (header) {'
program firstTest 5 "$(counted same src/frame/one.h 1 0)" "$(counted another src/frame/one.h 0 1)"
sees "those of a header do" 0 "$(row src/frame 4 0 0 100.00% 100% 100.00%)"
whole
printf '    LOG_TRACE(one);\n' >> "$tree/src/text/one.cpp"
program logTest 5 "$(logs one src/text/one.cpp 0 1)" "$(logs two src/frame/one.cpp 1 1)"
printf '    LOG_TRACE(two);\n' >> "$tree/src/frame/one.cpp"
sees "a log site is a condition where it stands" 1 \
    "src/text/one.cpp:2: never true (src/text, one): LOG_TRACE(one);" "$(row src/text 4 1 0 75.00% 100% 100.00%)" \
    "$(row src/frame 4 0 0 100.00% 100% 100.00%)" "$(row src/logging 2 0 0 100.00% 100% 100.00%)"

# What cannot be reached
whole
program restTest 5 "$(counted rest src/frame/one.cpp 0 1)"
unreached() { printf '# Comment\n\n%s\n' "$1" > "$tree/scripts/coverageUnreached"; }
unreached 'src/frame/one.cpp | if (one) { | 1 | it is so'
sees "an entry for a branch" 0 "$(row src/frame 4 0 1 100.00% 100% 100.00%)"
unreached 'src/frame/one.cpp | if (one) { | 2 | it is so'
sees "an entry for one branch too many" 1 "scripts/coverageUnreached: taken, or not there: src/frame/one.cpp | if (one) {"
unreached 'src/frame/one.cpp | if (other) { | 1 | it is so'
sees "an entry for another line" 1 "src/frame/one.cpp:1: never true (src/frame, rest): if (one) {" \
    "scripts/coverageUnreached: taken, or not there: src/frame/one.cpp | if (other) {"
whole
write src/frame/two.cpp 'nothing'
sees "a source that no program has" 1 "src/frame/two.cpp: no program that was run has it"
unreached 'src/frame/two.cpp | * | * | for another system'
sees "an entry for a source" 0 "not counted: src/frame/two.cpp: for another system"
rm "$tree/src/frame/two.cpp"
sees "an entry for a source that is gone" 1 "scripts/coverageUnreached: counted, or not there: src/frame/two.cpp"
unreached 'src/frame/one.cpp | * | * | for another system'
sees "an entry for a source that is counted" 1 "scripts/coverageUnreached: counted, or not there: src/frame/one.cpp"

# What cannot be trusted
whole
echo "hash-mismatch: No profile record found for 'unused' with hash = 0x0" > "$DUMP"
sees "a counted without counters beside the same with them" 0
echo "hash-mismatch: No profile record found for 'lost' with hash = 0x12" > "$DUMP"
sees "counts that belong to another body" 2 "hash-mismatch: No profile record found for 'lost' with hash = 0x12"
whole
rm "$tree/build/wideTest"
sees "a profile of a program that was built anew" 2 \
    "coverage: $tree/build/profiles/wideTest.profraw is of a program that is not there any more"
whole
rm "$tree"/build/profiles/*
sees "tests that have not run" 2 "coverage: no profiles in $tree/build/profiles"

[ "$failures" -eq 0 ] || { echo "$failures failed" >&2; exit 1; }
