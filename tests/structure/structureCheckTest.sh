#!/usr/bin/env bash
# Plants each kind of breach into a copy of the tree and sees scripts/check report it, and nothing else.
#
#   structureCheckTest.sh ROOT
set -euo pipefail
root=$(cd "$1" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
tree=$work/tree
mkdir "$tree"
for folder in src siblings host tests examples; do cp -r "$root/$folder" "$tree/"; done

failures=0
fail() { failures=$((failures + 1)); printf 'FAILED: %s\n' "$@" >&2; }

# sees NAME EXIT_CODE OUTPUT [OPTION ...]: runs the check over the copy and compares what it prints.
sees() {
    local name=$1 code=$2 expected=$3 seen=0 output
    shift 3
    output=$("$root/scripts/check" "$@" "$tree" 2>&1) || seen=$?
    [ "$seen" = "$code" ] && [ "$output" = "$expected" ] && return 0
    fail "$name" "  expected ($code): $expected" "  seen ($seen): $output"
}

# plant NAME FILE MESSAGE LINE: puts LINE before the first line of FILE, which is made if there is none, and expects
# MESSAGE for it. The copy is as before afterwards.
plant() {
    local name=$1 file=$2 message=$3 line=$4
    local kept=$work/kept
    rm -f "$kept"
    if [ -e "$tree/$file" ]; then mv "$tree/$file" "$kept"; fi
    mkdir -p "$(dirname "$tree/$file")"
    { printf '%s\n' "$line"; if [ -e "$kept" ]; then cat "$kept"; fi; } > "$tree/$file"
    sees "$name" 1 "$file:$message"
    rm "$tree/$file"
    if [ -e "$kept" ]; then mv "$kept" "$tree/$file"; fi
}

sees "a tree without a breach is passed" 0 ""

# Layers
plant "platform looks at nothing above it" src/platform/planted.h \
    "1: platform may not include frame/interfaces.h" '#include "frame/interfaces.h"'
plant "frame does not look at text" src/frame/planted.cpp \
    "1: frame may not include text/textConvert.h" '#include "text/textConvert.h"'
plant "frame does not look at the receiver" src/frame/baseServices.cpp \
    "1: frame may not include mordRev/src/mordRev.h" '#include "mordRev/src/mordRev.h"'
plant "text does not look at logging" src/text/textConvert.cpp \
    "1: text may not include logging/logMacros.h" '#include "logging/logMacros.h"'
plant "logging does not look at the receiver" src/logging/planted.h \
    "1: logging may not include mordRev/src/mordRev.h" '#include "mordRev/src/mordRev.h"'
plant "logging does not look at native" src/logging/planted.cpp \
    "1: logging may not include native/native.h" '#include "native/native.h"'
plant "native does not look at frame" src/native/planted.h \
    "1: native may not include frame/identifiers.h" '#include "frame/identifiers.h"'
plant "an include with blanks in it is read" src/platform/planted.cpp \
    "1: platform may not include text/textConvert.h" '  #  include   "text/textConvert.h" // why'

# What src does not see
for other in siblings/serviceObject.h host/dots/dotStore.h tests/hostKit/callLog.h ../siblings/serviceObject.h mordRev.h; do
    plant "src does not include $other" src/mordRev/src/planted.cpp \
        "1: src includes its own sources by their path from src, and nothing else of the tree, not $other" \
        "#include \"$other\""
done
plant "src has no other parts" src/util/planted.h "1: no such part of src: util" '#pragma once'

# Platform
inOtherCode="the platform is tested in wideChar.h and callConv.h alone; other code picks a body by its file"
plant "#ifdef of the system" src/mordRev/src/planted.cpp "1: $inOtherCode" '#ifdef _WIN32'
plant "#if of the system" src/platform/platform.h "1: $inOtherCode" '#if defined(__linux__)'
plant "#ifndef of the system" host/planted.cpp "1: $inOtherCode" '#ifndef __unix__'
plant "#elif of the processor" siblings/planted.h "1: $inOtherCode" '#elif defined(__i386__)'
plant "#if of the compiler" tests/abi/planted.h "1: $inOtherCode" '# if __GNUC__ > 11'
plant "#if that goes on in the next line" src/text/planted.h "1: $inOtherCode" $'#if 1 && \\\n    defined(_MSC_VER)'

# Headers of the system
for header in windows.h unistd.h sys/types.h winternl.h; do
    plant "<$header> in the receiver" src/mordRev/src/planted.cpp \
        "1: headers of the system stand in the platform's bodies alone, not <$header>" "#include <$header>"
done
plant "<windows.h> in a header of the platform" src/platform/planted.h \
    "1: headers of the system stand in the platform's bodies alone, not <windows.h>" '#include <windows.h>'

# Public headers
for header in platform/wideChar.h platform/callConv.h frame/identifiers.h frame/interfaces.h frame/values.h; do
    plant "a public header takes nothing of the standard library" "src/$header" \
        "1: a public header includes <stdint.h> and public headers alone, not string" '#include <string>'
    plant "a public header takes no other header of ours" "src/$header" \
        "1: a public header includes <stdint.h> and public headers alone, not frame/factory.h" '#include "frame/factory.h"'
done
plant "a host sees the public headers alone" host/planted.cpp \
    "1: a host includes the public headers alone, not mordRev/src/mordRev.h" '#include "mordRev/src/mordRev.h"'
plant "a host sees one header of the siblings" host/planted.cpp \
    "1: a host includes zelkBase/hostLog.h of the siblings alone, not zelkBase/logWriter.h" \
    '#include "zelkBase/logWriter.h"'
plant "a sibling does not see the receiver" siblings/planted.cpp \
    "1: a sibling includes frame and platform, not mordRev/src/mordRev.h" '#include "mordRev/src/mordRev.h"'

# RapidJSON
plant "RapidJSON in a header" src/mordRev/src/report.h \
    "1: RapidJSON stands in mordRev/src/json.h and .cpp files alone" '#include <rapidjson/document.h>'
plant "json.h in a header" src/mordRev/src/mordRev.h \
    "1: mordRev/src/json.h is included by .cpp files alone" '#include "mordRev/src/json.h"'

# Names, sizes, habits
named="1: a source is named in lowerCamel and ends in .h, .cpp, .c or .S"
for file in src/text/TextConvert.h src/text/text_convert.cpp host/dot-store.cpp tests/abi/slots.hpp siblings/log.writer.cpp; do
    plant "the name $file" "$file" "$named" '// A source.'
done
plant "a source of 501 lines" src/text/planted.cpp "501: more than 500 lines" "$(yes '//' | head -n 501)"
plant "a line of 121 columns" src/text/planted.cpp "1: more than 120 columns" "// $(printf '%118s' x)"
plant "work that is left" host/planted.cpp "1: work is done or it is not in the tree" '// TODO: later'
plant "a test that is passed over" tests/abi/plantedTest.cpp "1: a test is run and can fail" '    GTEST_SKIP();'
plant "a test that is switched off" tests/abi/plantedTest.cpp "1: a test is run and can fail" 'TEST(Abi, DISABLED_Slot) {'
plant "test cases in a file that is named for none" tests/abi/planted.cpp \
    "1: test cases stand in a file of tests that is named xTest.cpp" 'TEST(Abi, Slot) {'

# What stands at the edge of a rule and is none of its breaches.
allow() {
    local name=$1 file=$2 text=$3
    printf '%s\n' "$text" > "$tree/$file"
    sees "$name" 0 ""
    rm "$tree/$file"
}
allow "a source of 500 lines" src/text/planted.cpp "$(yes '//' | head -n 500)"
allow "a line of 120 columns that take more bytes" src/text/planted.cpp "// $(printf '%115s' ' ')ää"
allow "a condition that tests no platform" src/text/planted.h $'#ifdef __cplusplus\n#if defined(MORDREV_CALLER_BITS)'
allow "another body of the platform" src/platform/plantedWin32.cpp '#include <windows.h>'
allow "RapidJSON in a source" src/mordRev/src/planted.cpp $'#include <rapidjson/document.h>\n#include "mordRev/src/json.h"'
allow "the receiver looks at all" src/mordRev/src/planted.h $'#include "native/native.h"\n#include "logging/logState.h"'

# The tools: stand-ins tell what they are given.
tools=$work/tools
mkdir "$tools"
for tool in bash awk find sort grep sed xargs nproc dirname env mktemp rm; do ln -s "$(command -v "$tool")" "$tools/$tool"; done
PATH=$tools sees "a missing clang-format is told" 2 "check: clang-format is not installed (scripts/setup lint)" --format
PATH=$tools sees "a missing clang-tidy is told" 2 "check: clang-tidy is not installed (scripts/setup lint)" --tidy
sees "an unknown option is told" 2 "check: unknown option --fast" --fast

# The stand-ins find fault with the planted source and with no other.
cat > "$tools/clang-format" << 'END'
#!/usr/bin/env bash
for argument; do case "$argument" in *planted.cpp) echo "planted.cpp: fault"; exit 1 ;; esac; done
END
cat > "$tools/clang-tidy" << 'END'
#!/usr/bin/env bash
source=${!#}
while [ "$1" != -p ]; do shift; done
grep -q "\"file\": \"$source\"" "$2/compile_commands.json" || { echo "no command for $source"; exit 1; }
! grep -e cmake_pch -e -Winvalid-pch "$2/compile_commands.json" || exit 1
case "$source" in *planted.cpp) echo "planted.cpp: fault"; exit 1 ;; esac
END
chmod +x "$tools/clang-format" "$tools/clang-tidy"
PATH=$tools sees "clang-format without findings" 0 "" --format
printf '// A source.\n' > "$tree/src/text/planted.cpp"
PATH=$tools sees "a finding of clang-format" 1 "planted.cpp: fault" --format
PATH=$tools sees "clang-tidy without the commands of a build" 2 \
    "check: no build/linux/compile_commands.json (cmake --preset linux)" --tidy
mkdir -p "$tree/build/linux"
built() { # the commands of a build of these sources
    printf '[\n'
    printf '{\n  "directory": "/elsewhere",\n  "command": "c++ -Winvalid-pch -include /a/cmake_pch.hxx -c",\n  "file": "%s"\n},\n' "$@"
    printf ']\n'
} > "$tree/build/linux/compile_commands.json"
built "$tree/tests/abi/planted.cpp" /elsewhere/src/text/planted.cpp
PATH=$tools sees "clang-tidy with nothing of src to look at" 2 "check: build/linux builds nothing of $tree/src" --tidy
built "$tree/tests/abi/planted.cpp" "$tree/src/text/textConvert.cpp" "$tree/src/mordRev/src/json.cpp"
PATH=$tools sees "clang-tidy without findings in src" 0 "" --tidy
built "$tree/src/text/planted.cpp" "$tree/src/text/textConvert.cpp" "$tree/src/text/planted.cpp"
PATH=$tools sees "a finding of clang-tidy, told once for a source that is built twice" 1 "planted.cpp: fault" --tidy

[ "$failures" -eq 0 ] || { echo "$failures failed" >&2; exit 1; }
