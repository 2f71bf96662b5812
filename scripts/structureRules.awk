# The rules of scripts/check that need nothing but the text of the sources. Files are named from the root of the tree.
# Ends with 1 when a rule is broken.

function report(line, message) {
    print FILENAME ":" line ": " message
    broken = 1
}

function isIn(word, list) {
    return index(" " list " ", " " word " ") > 0
}

function baseName(path) {
    sub(/.*\//, "", path)
    return path
}

BEGIN {
    # Which folders of src the sources of a folder may include.
    mayInclude["platform"] = "platform"
    mayInclude["frame"] = "frame platform"
    mayInclude["text"] = "text frame platform"
    mayInclude["logging"] = "logging text frame platform"
    mayInclude["native"] = "native platform"
    mayInclude["mordRev"] = "mordRev native logging text frame platform"
    layers = "platform frame text logging native mordRev"

    # The export makes the receiver, and so it is the one source of the frame that looks upward.
    lookout = "src/frame/createZelkObject.cpp"

    # What a host includes; it gets installed.
    publicHeaders = "platform/wideChar.h platform/callConv.h frame/identifiers.h frame/interfaces.h" \
                    " frame/values.h"

    # What a host includes of the siblings.
    siblingHeader = "zelkBase/hostLog.h"

    # The two headers that may test the platform.
    platformTests = "src/platform/wideChar.h src/platform/callConv.h"

    jsonHeader = "mordRev/src/json.h"
    longest = 500
    widest = 120

    platformMacro = "(_WIN(32|64)|(^|[^A-Za-z0-9_])(WIN32|WIN64|WINVER|unix|linux)([^A-Za-z0-9_]|$)|_WIN32_WINNT|__MINGW|__CYGWIN__" \
                    "|__linux|__unix|__APPLE__|__FreeBSD__|__ANDROID__|_POSIX_|_MSC_|__GNUC__|__GLIBC__|__GLIBCXX__|__clang__" \
                    "|__i[3-6]86|__x86_64|__amd64|__arm|__aarch64__|_M_IX86|_M_X64|_M_AMD64|_M_ARM|_?_LP64|__ILP32__" \
                    "|__SIZEOF_POINTER__|__WORDSIZE|__BYTE_ORDER)"
    noTest = "(GTEST_SKIP|SUCCEED\\(|DISABLED_|EXPECT_TRUE\\(true\\)|ASSERT_TRUE\\(true\\))"
}

# Each file begins here; the one before it has ended.
FNR == 1 {
    endFile()
    file = FILENAME
    header = file ~ /\.h$/
    folder = file
    sub(/\/.*/, "", folder)
    layer = ""
    path = "" # from src, as it is included
    if (folder == "src") {
        path = substr(file, 5)
        layer = path
        sub(/\/.*/, "", layer)
        if (!(layer in mayInclude)) {
            report(1, "no such part of src: " layer)
        }
    }
    isPublic = isIn(path, publicHeaders)
    systemBody = file ~ /^src\/platform\/[A-Za-z0-9]*(Win32|Posix)\.cpp$/
    condition = ""
    hasTests = 0

    if (baseName(file) !~ /^[a-z][A-Za-z0-9]*\.(h|c|cpp|S)$/) {
        report(1, "a source is named in lowerCamel and ends in .h, .cpp, .c or .S")
    }
}

{
    lines = FNR
    columns = $0
    gsub(/[\200-\277]/, "", columns) # the rest of a character in UTF-8
    if (length(columns) > widest) {
        report(FNR, "more than " widest " columns")
    }
    if ($0 ~ /(TODO|FIXME)/) {
        report(FNR, "work is done or it is not in the tree")
    }
    if (folder == "tests" && $0 ~ noTest) {
        report(FNR, "a test is run and can fail")
    }
    if ($0 ~ /^TEST(_F|_P)?\(/ || $0 ~ /^TYPED_TEST(_P)?\(/) {
        hasTests = 1
    }
}

# A condition of the preprocessor, with the lines that continue it.
condition != "" || /^[ \t]*#[ \t]*(if|ifdef|ifndef|elif)/ {
    if (condition == "") {
        conditionLine = FNR
    }
    condition = condition " " $0
    if ($0 !~ /\\$/) {
        if (condition ~ platformMacro && !isIn(file, platformTests)) {
            report(conditionLine, "the platform is tested in wideChar.h and callConv.h alone; other code picks a body by its file")
        }
        condition = ""
    }
}

/^[ \t]*#[ \t]*include[ \t]*[<"]/ {
    quoted = $0 ~ /include[ \t]*"/
    included = $0
    sub(/^[^<"]*[<"]/, "", included)
    sub(/[>"].*/, "", included)
    target = included
    sub(/\/.*/, "", target)

    if (folder == "src") {
        checkInclude()
    } else if (quoted && isIn(target, layers)) {
        if ((folder == "host" || folder == "examples") && !isIn(included, publicHeaders)) {
            report(FNR, "a host includes the public headers alone, not " included)
        } else if (folder == "siblings" && !isIn(target, mayInclude["frame"])) {
            report(FNR, "a sibling includes frame and platform, not " included)
        }
    } else if (folder == "host" && quoted && (target == "zelkBase" || target == "ferrocore") && included != siblingHeader) {
        report(FNR, "a host includes " siblingHeader " of the siblings alone, not " included)
    }
}

# An include in src.
function checkInclude() {
    if (isPublic && !isIn(included, publicHeaders) && !(included == "stdint.h" && !quoted)) {
        report(FNR, "a public header includes <stdint.h> and public headers alone, not " included)
    } else if (quoted && !isIn(target, layers)) {
        report(FNR, "src includes its own sources by their path from src, and nothing else of the tree, not " included)
    } else if (quoted && !isIn(target, mayInclude[layer]) && file != lookout) {
        report(FNR, layer " may not include " included)
    } else if (included == jsonHeader && header) {
        report(FNR, included " is included by .cpp files alone")
    } else if (target == "rapidjson" && header && path != jsonHeader) {
        report(FNR, "RapidJSON stands in " jsonHeader " and .cpp files alone")
    } else if (!quoted && target != "rapidjson" && included !~ /^[a-z_]+$/ && included != "stdint.h" && !systemBody) {
        report(FNR, "headers of the system stand in the platform's bodies alone, not <" included ">")
    }
}

function endFile() {
    if (file == "") {
        return
    }
    if (lines > longest) {
        print file ":" lines ": more than " longest " lines"
        broken = 1
    }
    if (hasTests && file !~ /^tests\/.*Test(Win32|Posix|Linux)?\.cpp$/) {
        print file ":1: test cases stand in a file of tests that is named xTest.cpp"
        broken = 1
    }
}

END {
    endFile()
    exit broken
}
