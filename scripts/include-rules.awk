# Reads "file:line:#include …" and prints each include that the rules forbid; ends with 1 when there is one.
#
# The library's folders include the folders below them, the platform's headers and the standard library. The
# platform's headers include themselves and the standard library. The phone doesn't know the library.

BEGIN {
    below["core"] = ""
    below["launch"] = below["state"] = below["surfaces"] = below["icons"] = below["record"] = "core"
    below["panel"] = "core launch state surfaces icons record"
    below["entry"] = below["panel"] " panel"
}

function forbid(reason) {
    print file ":" line ": " included " is not for this file: " reason
    wrong = 1
}

# A header of the standard library has neither a slash nor a suffix.
function standard(name) { return name ~ /^[a-z_0-9]+$/ }

# Whether the space-separated list holds the word.
function holds(list, word) { return index(" " list " ", " " word " ") > 0 }

{
    split($0, parts, ":")
    file = parts[1]
    line = parts[2]
    if (!match($0, /[<"][^>"]*[>"]/)) next
    included = substr($0, RSTART, RLENGTH)
    quoted = included ~ /^"/
    name = substr(included, 2, length(included) - 2)
    target = name
    sub(/\/.*/, "", target)

    count = split(file, path, "/")
    folder = path[1] == "src" ? path[2] : path[1]

    if (path[1] == "src" && folder in below) {
        if (!quoted) {
            if (!standard(name)) forbid("the library includes the platform and the standard library alone")
        } else if (target != "platform" && target != folder && !holds(below[folder], target)) {
            forbid("src/" folder " knows the platform" (below[folder] == "" ? " alone" : " and src/{" below[folder] "}"))
        }
    } else if (path[1] == "src" && folder == "platform") {
        if (quoted && target != "platform") forbid("the platform knows nobody")
        if (!quoted && file ~ /\.h$/ && !standard(name)) forbid("third-party and system headers stand in .cpp files")
    } else if (path[1] == "src") {
        forbid("src/" folder " is not a folder of the design; give it its rule in scripts/include-rules.awk")
    } else if (path[1] == "phone") {
        if (quoted && target in below) forbid("the phone meets the library through dlopen alone")
    }
}

END { exit wrong }
