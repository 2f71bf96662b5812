#!/usr/bin/env bash
# Puts a stand-in for Wine under scripts/wineTest, and sees it try again a start that came to nothing, and nothing else.
#
#   wineStartTest.sh ROOT
set -euo pipefail
root=$(cd "$1" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cp "$root/scripts/wineTest" "$work/wineTest"

# The stand-in: the n-th start does what the n-th line of the plan says, and starts beyond the plan what its last says.
cat > "$work/wine" <<'EOF'
#!/usr/bin/env bash
here=$(dirname "${BASH_SOURCE[0]}")
echo "$*" >> "$here/starts"
mapfile -t plan < "$here/plan"
n=$(wc -l < "$here/starts")
[ "$n" -le ${#plan[@]} ] || n=${#plan[@]}
eval "${plan[n - 1]}"
EOF
# Nor is there anything to wait for between two starts.
mkdir "$work/bin"
printf '#!/bin/sh\n' > "$work/bin/sleep"
chmod +x "$work/wine" "$work/bin/sleep"
PATH=$work/bin:$PATH

failures=0
# sees NAME EXIT_CODE STARTS OUTPUT PATTERN PLAN ...: what is printed is OUTPUT, and what is told is like PATTERN.
sees() {
    local name=$1 code=$2 starts=$3 output=$4 pattern=$5 seen=0 printed
    shift 5
    printf '%s\n' "$@" > "$work/plan"
    rm -f "$work/starts"
    printed=$("$work/wineTest" some.exe "an argument" 2> "$work/told") || seen=$?
    [ "$seen" = "$code" ] && [ "$printed" = "$output" ] && grep -qE -- "$pattern" "$work/told" \
        && [ "$(grep -cx 'some.exe an argument' "$work/starts")" = "$starts" ] && return 0
    failures=$((failures + 1))
    {
        echo "FAILED: $name" "  expected $code, $starts starts, '$output'; seen $seen, '$printed', starts and words:"
        cat "$work/starts" "$work/told"
    } >&2
}

silentOnce='^wineTest: start 1 of some.exe came to nothing, exit code 53$'
sees "a test that passes" 0 1 passed '^told$' 'echo passed; echo told >&2'
sees "a test that fails" 1 1 failed '^wineTest: exit code 1$' 'echo failed; exit 1' 'echo passed'
sees "a program that dies behind its first word" 5 1 begun '^wineTest: exit code 5$' 'echo begun; exit 5' 'echo passed'
sees "a program that dies behind a word on standard error" 5 1 '' '^begun$' 'echo begun >&2; exit 5' 'echo passed'
sees "a start without a word" 0 2 passed "$silentOnce" 'exit 53' 'echo passed'
sees "a start that Wine tells of" 0 2 passed "^wineTest: start 1 " 'echo "ShellExecuteEx failed: x"; exit 1' 'echo passed'
sees "a test that fails at its second start" 1 2 failed "$silentOnce" 'exit 53' 'echo failed; exit 1'
sees "a program that is killed before its first word" 0 2 passed 'exit code 137$' 'kill -KILL $$' 'echo passed'
sees "no start that comes to anything" 53 3 '' '^wineTest: start 3 of some.exe came to nothing' 'exit 53'
sees "silence that calls itself success" 1 3 '' '^wineTest: start 3 of some.exe came to nothing, exit code 0$' 'exit 0'

[ "$failures" -eq 0 ] || { echo "$failures failed" >&2; exit 1; }
