# Reads "file:line:#include …" and prints each include that the rules forbid; ends with 1 when there is one.
#
# A row says what the files of a folder may include beside their own folder: other folders, or the trees above them. A
# folder without a row, and an arrow that isn't in one, is a fault: so the arrows point one way, and a new folder says
# where it stands.

BEGIN {
    # The library: its folders below, and the platform's headers.
    below["src"] = "core entry"
    below["src/core"] = "platform"
    below["src/launch"] = below["src/state"] = below["src/surfaces"] = below["src/icons"] = below["src/record"] \
        = "platform core"
    below["src/panel"] = "platform core launch state surfaces icons record"
    below["src/entry"] = below["src/panel"] " panel"

    # The platform knows nobody.
    below["platform"] = "platform"

    # The phone: process and supervisor, control, the frameworks, device and system. A framework names those below it.
    ground = "platform phone/system"
    below["phone/system"] = "platform"
    below["phone/substrate"] = ground
    below["phone/device"] = ground " phone/substrate"
    below["phone/backboard"] = below["phone/celestial"] = ground " phone/device"
    below["phone/bulletinboard"] = below["phone/frontboard"] = below["phone/localauthentication"] \
        = below["phone/uikit"] = below["phone/usernotifications"] = ground
    below["phone/corelocation"] = below["phone/tcc"] = ground " phone/device"
    below["phone/iconservices"] = below["phone/installcoordination"] = ground " phone/launchservices"
    below["phone/launchservices"] = ground " phone/device phone/frontboard"
    below["phone/appstoredaemon"] = ground " phone/device phone/launchservices"
    below["phone/search"] = ground " phone/iconservices phone/launchservices"
    below["phone/storekitui"] = ground " phone/appstoredaemon"
    below["phone/springboard"] = ground " phone/backboard phone/device phone/frontboard phone/iconservices" \
        " phone/launchservices"
    frameworks = "phone/appstoredaemon phone/backboard phone/bulletinboard phone/celestial phone/corelocation" \
        " phone/frontboard phone/iconservices phone/installcoordination phone/launchservices phone/localauthentication phone/search phone/springboard phone/storekitui" \
        " phone/tcc phone/uikit phone/usernotifications"
    below["phone/control"] = ground " phone/device phone/substrate " frameworks
    below["phone/process"] = below["phone/supervisor"] = below["phone/control"] " phone/control phone/process"
    below["phone"] = "phone/process phone/supervisor"

    # The command: its groups of verbs, on what they share.
    shared = "platform phone core entry launch state surfaces icons record panel cli/command"
    below["cli/command"] = "platform phone"
    below["cli/explain"] = below["cli/icon"] = below["cli/history"] = below["cli/plan"] = shared
    below["cli/app"] = below["cli/policy"] = shared " cli/history"
    below["cli/phone"] = shared " cli/explain cli/history"
    below["cli/shell"] = shared " cli/policy"
    below["cli"] = "platform phone cli"

    # Tests and benchmarks include what they try.
    below["tests"] = below["bench"] = "*"
}

function forbid(reason) {
    print file ":" line ": " included " is not for this file: " reason
    wrong = 1
}

# A header of the standard library has neither a slash nor a suffix.
function standard(name) { return name ~ /^[a-z_0-9]+$/ }

# The row of a file: that of its longest folder that has one; "" for none. Only trees have rows for all below them.
function rowOf(path,    folder, last) {
    folder = path
    while ((last = match(folder, /\/[^\/]*$/)) > 0) {
        folder = substr(folder, 1, last - 1)
        if (folder in below) {
            # A folder of the library, the phone or the command must have a row of its own.
            if (folder ~ /^(src|phone|cli)$/ && path ~ ("^" folder "/[^/]*/")) return ""
            return folder
        }
    }
    return ""
}

# Whether a folder of the list is that of the included file, or stands above it.
function allows(list, name,    count, words, i) {
    count = split(list, words, " ")
    for (i = 1; i <= count; i++) if (words[i] == "*" || index(name, words[i] "/") == 1) return 1
    return 0
}

{
    split($0, parts, ":")
    file = parts[1]
    line = parts[2]
    if (!match($0, /[<"][^>"]*[>"]/)) next
    included = substr($0, RSTART, RLENGTH)
    quoted = included ~ /^"/
    name = substr(included, 2, length(included) - 2)

    row = rowOf(file)
    if (row == "") {
        forbid("its folder has no row in scripts/include-rules.awk")
        next
    }
    own = row
    sub(/^(src|tests)\//, "", own)
    if (quoted && !allows(below[row], name) && index(name, own "/") != 1)
        forbid(row " includes itself and " below[row])
    if (!quoted && row ~ /^src/ && !standard(name))
        forbid("the library includes the platform and the standard library alone")
    if (!quoted && row == "platform" && file ~ /\.h$/ && !standard(name))
        forbid("third-party and system headers stand in .cpp files")
}

END { exit wrong }
