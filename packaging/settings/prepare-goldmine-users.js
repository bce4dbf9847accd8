// Writes the entries that Corvane to 3CX needs into the INI files of all users of a GoldMine folder,
// so that nobody is asked at a first run:
//   cscript //nologo prepare-goldmine-users.js <GoldMine folder> <CorvaneTo3CX.exe>
//   cscript //nologo prepare-goldmine-users.js <GoldMine folder> <CorvaneTo3CX.exe> /undo
// GoldMine must be closed: it writes its files when it ends. A file is copied beside itself before
// its first change, as <user>.INI.bak-CorvaneTo3CX; /undo puts back the three entries as that copy
// has them, where the dialing instruction is still this program's, and removes the copy.
// Exit code: 0 done, 1 a file could not be changed, 2 not understood.

var files = new ActiveXObject("Scripting.FileSystemObject");
var SUFFIX = ".bak-CorvaneTo3CX";
var SECTION = /^\s*\[([^\]]*)\]/;

function say(text) { WScript.Echo(text); }

// The lines of a file, each with its line end.
function readLines(path) {
    if (files.GetFile(path).Size === 0) return [];
    var stream = files.OpenTextFile(path, 1);
    var text = stream.ReadAll();
    stream.Close();
    return text.match(/[^\n]*\n|[^\n]+$/g) || [];
}

function writeLines(path, lines) {
    var stream = files.OpenTextFile(path, 2);
    stream.Write(lines.join(""));
    stream.Close();
}

// Index of the section's head, and of what comes behind its last line with something in it.
function findSection(lines, name) {
    for (var head = 0; head < lines.length; ++head) {
        var found = SECTION.exec(lines[head]);
        if (!found || found[1].toLowerCase() !== name.toLowerCase()) continue;
        var end = head + 1, next = head + 1;
        for (; next < lines.length && !SECTION.test(lines[next]); ++next)
            if (/\S/.test(lines[next])) end = next + 1;
        return { head: head, end: end };
    }
    return null;
}

function findEntry(lines, section, key) {
    for (var at = section ? section.head + 1 : lines.length; section && at < section.end; ++at) {
        var parts = /^\s*([^=;]*?)\s*=\s*(.*?)\s*$/.exec(lines[at]);
        if (parts && parts[1].toLowerCase() === key.toLowerCase()) return { at: at, value: parts[2] };
    }
    return null;
}

function valueOf(lines, key) {
    var entry = findEntry(lines, findSection(lines, "Modem"), key);
    return entry ? entry.value : null;
}

// Sets an entry of [Modem]; null takes it away.
function setValue(lines, key, value) {
    var section = findSection(lines, "Modem");
    if (!section && value === null) return;
    if (!section) {
        if (lines.length > 0) lines[lines.length - 1] = lines[lines.length - 1].replace(/\r?\n?$/, "\r\n");
        lines.push("[Modem]\r\n");
        section = { head: lines.length - 1, end: lines.length };
    }
    var entry = findEntry(lines, section, key);
    var line = key + "=" + value + "\r\n";
    if (value === null) {
        if (entry) lines.splice(entry.at, 1);
    } else if (entry) {
        lines[entry.at] = line;
    } else {
        lines[section.end - 1] = lines[section.end - 1].replace(/\r?\n?$/, "\r\n");
        lines.splice(section.end, 0, line);
    }
}

// What the program would write, and leaves, itself.
function wanted(lines, instruction) {
    var device = valueOf(lines, "DeviceID"), translation = valueOf(lines, "TAPITranslation");
    return {
        DeviceID: device === null || device === "" || device === "-1" ? "0" : device,
        DDEDial: instruction,
        TAPITranslation: translation === null || translation === "" || translation === "1" ? "0" : translation
    };
}

function prepare(path, instruction) {
    var lines = readLines(path), entries = wanted(lines, instruction), changed = false;
    for (var key in entries) {
        if (valueOf(lines, key) === entries[key]) continue;
        setValue(lines, key, entries[key]);
        changed = true;
    }
    if (!changed) return "was prepared already";
    if (!files.FileExists(path + SUFFIX)) files.CopyFile(path, path + SUFFIX, false);
    writeLines(path, lines);
    return "prepared";
}

function undo(path, instruction) {
    if (!files.FileExists(path + SUFFIX)) return "has no copy; nothing undone";
    var lines = readLines(path);
    if (valueOf(lines, "DDEDial") !== instruction) return "dials by something else; nothing undone";
    var before = readLines(path + SUFFIX), keys = ["DeviceID", "DDEDial", "TAPITranslation"];
    for (var i = 0; i < keys.length; ++i) setValue(lines, keys[i], valueOf(before, keys[i]));
    if (!findSection(before, "Modem")) {
        var section = findSection(lines, "Modem");
        if (section && section.end === section.head + 1) lines.splice(section.head, 1);
    }
    writeLines(path, lines);
    files.DeleteFile(path + SUFFIX);
    return "undone";
}

// A user's file has GoldMine's own section, which GM.INI has as well.
function isUserFile(path) {
    return /\.ini$/i.test(path) && !/\\gm\.ini$/i.test(path) && findSection(readLines(path), "GoldMine") !== null;
}

function main(words) {
    var work = words.length === 2 ? prepare : words.length === 3 && /^\/undo$/i.test(words(2)) ? undo : null;
    if (!work || !files.FolderExists(words(0)) || !/^[a-z]:\\[^\s"]+\.exe$/i.test(words(1))) {
        say("usage: cscript //nologo prepare-goldmine-users.js <GoldMine folder> <path of CorvaneTo3CX.exe> [/undo]");
        return 2;
    }
    var folder = files.GetAbsolutePathName(words(0)), failed = 0, seen = 0;
    var items = new ActiveXObject("Shell.Application").NameSpace(folder).Items();
    for (var i = 0; i < items.Count; ++i) {
        var path = items.Item(i).Path, outcome;
        try {
            if (!isUserFile(path)) continue;
            ++seen;
            outcome = work(path, "&Dial,," + words(1) + " %s");
        } catch (error) {
            failed = 1;
            outcome = "could not be changed: " + error.message;
        }
        say(files.GetFileName(path) + ": " + outcome);
    }
    if (seen === 0) say("There is no user's INI file in " + folder + ".");
    return failed;
}

WScript.Quit(main(WScript.Arguments));
