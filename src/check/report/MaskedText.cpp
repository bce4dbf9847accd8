#include "check/report/MaskedText.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>
#include <vector>

#include "check/report/Masking.h"
#include "settings/SettingsCatalogue.h"
#include "util/CommandLine.h"
#include "util/RuntimeError.h"
#include "util/Text.h"

namespace corvane {

namespace {

// All that the log and the findings on links can say. A part in braces differs, and is of one of
// the kinds below; "{own}" ends a text that goes on in the program's own words, with nothing in
// them that differs. The first form that fits counts.
constexpr auto forms = std::to_array<std::wstring_view>({
    // Start and end of a run
    L"--------------------{date}",
    L"--------------------{text}",
    L"Corvane {count} started with param(s): {parameters}.",
    L"Corvane {count} started without params.",
    L"GoldMine not running, so version unknown.",
    L"Parameters found but GoldMine not running. Exiting.",
    L"GoldMine version {count} detected.",
    L"Program was started without params. Process Call button disabled.",
    L"Corvane to 3CX disabled--{own}",
    L"Settings saved.",
    L"Setting {setting} holds characters that cannot be saved; they were saved as \"?\".",
    L"Could not write to log file \"{file}\": {error}",
    L"Run-time error '{count}': {error}",
    L"> COM command > {count} second(s) ({count} seconds): '<GMAPI call=\"{command}\"{text}",
    L"Could not change 3CX Command Line API Plugin log level: {error}",
    L"Call processing completed in {count} seconds.",
    L"Finished unloading form and closing program.",
    L"Program crashed: exception {address} in {module} at offset {address}.",
    L"Program crashed: exception {address} at address {address}.",
    L"Unrecognized parameter #{count}: {number}.",
    L"Ignored non-numeric CallerID: {number}.",
    L"Ignored short CallerID: {number}.",
    // GoldMine's answers
    L"GoldMine is running but returned an invalid Process ID {count}.",
    L"GoldMine is running but could not retrieve its path. Do not run GoldMine as Administrator. "
    L"({error})",
    L"Could not connect to GoldMine's user interface. Error number: {count} Error message: {error} "
    L"GoldMine should be installed locally. If it already is, this error can usually be resolved "
    L"by running the following command from a command prompt (opened with \"Run as "
    L"administrator\"):\"{file}\" /RegServer",
    L"GoldMine may be running but you are not logged in. Log in to GoldMine and re-try the "
    L"operation. Error number: {count} Error message: {error}",
    L"Lost connection to GoldMine's user interface. If you closed GoldMine before closing Corvane, "
    L"you can ignore this error. Error number: {count} Error message: {error}",
    L"Error retrieving GoldMine version.",
    L"Error parsing GoldMine version {text}",
    L"Corvane requires GoldMine 6.7 or later. Exiting.",
    L"Could not retrieve {own}",
    L"Could not find GoldMine <user>.INI file {file}",
    L"Declined: Okay to {own}",
    L"Declined: Your GoldMine <user>.INI file already has this DDEDial instruction: {text} Okay to "
    L"change that to point to Corvane to 3CX? The new instruction will be: {text}",
    L"Could not copy {file} to {file}.",
    L"Failed to update {file} [Modem] section with a dummy modem.",
    L"Failed to update {file} [Modem] section with the needed DDEDial instruction.",
    L"Failed to update {file} [Modem] section with TAPITranslation=0.",
    // The search
    L"Inbound call search for CallerID: {own}",
    L"Found {number} in Phone{count} of the current record.",
    L"Found {number} in an Additional Contact of the current record.",
    L"Found {number} in a primary contact record.",
    L"Found {number} in an Additional Contact record.",
    L"Corvane could not position to corresponding primary record{own}",
    L"Did not find GoldMine contact for {number}. Further call processing skipped.",
    L"Error calling DataStream Query function for this SQL query:{text}",
    L"Error calling DataStream Fetch function.{text}",
    L"Error calling DataStream Close function.{text}",
    L"There is no field number 1 delimited by a Carriage Return in the following record:{text}",
    // The history
    L"History creation: {own}",
    L"Creating history at {own}",
    L"Created incoming call history.",
    L"Created outgoing call history.",
    L"Could not insert call history.",
    L"Failed to create history {own}",
    L"Updated history Notes with link.",
    L"Could not update history Notes with link.",
    L"Opening {own}",
    L"Opened history item window.",
    L"Could not open history item window.",
    L"Could not open Complete Call dialog.",
    L"Could not watch for Complete Call dialog, {own}",
    L"Waiting for history Ref and Notes to be filled in: {count} second(s)",
    L"Could not fill in {own}",
    L"Finished opening {own}",
    L"Finishing creating history at {own}",
    L"Timed out after 10 seconds trying to insert {own}",
    // The recording
    L"Delaying adding link for {count} seconds.",
    L"Checked {count} files in \"{file}\" in {count} seconds.",
    L"Most recent file is \"{file}\", modified {date}.",
    L"Most recent file is \"{file}\", modified {text}.",
    L"Prepared link to \"{file}\".",
    L"No files found.",
    L"No files found in recordings folder \"{file}\". Link to recording not saved.",
    L"Could not access recordings folder \"{file}\". Link to recording not saved.",
    L"Could not read all of recordings folder \"{file}\". Link to recording not saved.",
    L"You need at least Read and List Folder Contents permissions on the recordings folder "
    L"\"{file}\". Link to recording not saved.",
    L"The most recent file in the recordings folder, \"{file}\", was created {count} seconds ago, "
    L"which exceeds the specified maximum age of {count} seconds. Link to recording not saved.",
    L"The most recent file in the recordings folder, \"{file}\", was created more than a year ago. "
    L"Link to recording not saved.",
    L"The most recent file in the recordings folder \"{file}\" does not include the 3CX Call "
    L"Identifier \"{identifier}\". Link not saved.",
    // Dialing
    L"Dialed {number} using 3CX.",
    L"Number to dial \"{number}\" contains no digits. Call processing terminated.",
    L"Call to number {number} failed. Command: {text}",
    // Descriptions of errors, and boxes that are no lines
    L"Permission denied (it leads to another place)",
    L"Error {count} opening Process ID {count}",
    L"Error retrieving full path from Process Handle {count}",
    L"Error loading configuration. Exiting.",
    L"Do you want to save configuration changes before exiting?",
    L"Okay to {own}",
    L"Please install either 3CXPhone or{own}",
    L"Please start GoldMine before processing a call.",
    L"The 3CX CRM Call Notifier is missing or empty.{own}",
    // What becomes of a number
    L"{count}, at least {count} are wanted",
    L"left out",
    L"account of the open record",
    L"Phone1 of the open record",
    L"Phone2 of the open record",
    L"Phone3 of the open record",
    L"GoldMine's own look-up, which shows the contact: {own}",
    L"query: {text}",
    L"CorvaneTo3CX.exe {number}",
    L"\"{file}\" -cmd makecall:{number}",
    L"{setting} is stored as \"{value}\", which does not convert; its default counts here",
    L"this user's settings neither search for callers nor keep a history",
    L"the master switch is off: {own}",
    L"nothing to dial: {own}",
    L"the \"/\" makes {own}",
    L"3CX's call trigger is not there: see CorvaneCheck wiring",
    L"{number} looks like an extension: it is dialed as the end of the number",
    L"{number} is cut off at the front, because only the last {count} digits are dialed",
    L"{number} is cut off at the front, because only the last {count} digits are dialed; it looks "
    L"like a country code",
    // What was found about links
    L"does not answer",
    L"the link before it ended in an error",
    L"the link \"{own}",
    L"error {count}: {error}",
    L"none is given, though recordings are to be linked",
    L"none: it belongs to 3CX 14 and later",
    L"none; {own}",
    L"none",
    L"on",
    L"off: no call is handled",
    L"HTML",
    L"plain text",
    L"registered",
    L"all convert",
    L"ImportantEvents",
    L"AllEvents: {own}",
    L"\"{value}\" is no log level",
    L"recordings are not linked",
    L"neither 3CXPhone nor 3CX MyPhone is installed",
    L"3CX is not installed",
    L"3CX MyPhone, {own}",
    L"3CXPhone for Windows, {own}",
    L"3CX calls another program: {file}",
    L"CallNotifierPath is missing: 3CX calls nobody",
    L"CallNotifierPath stands in the other registry view only: {file}",
    L"GoldMine answers",
    L"GoldMine cannot be asked",
    L"GoldMine knows no modem, so it does not dial",
    L"nobody is logged in to GoldMine",
    L"cannot connect: {error}",
    L"is not registered: {error}",
    L"is not running in this session: calls are not handled",
    L"there is one",
    L"there is no {own}",
    L"numbers are {own}",
    L"&Dial,,{file} %s",
    L"&Dial,,{file} %s dials through something else",
    L"{text} dials through something else",
    L"process {count} says: {said}",
    L"{setting} \"{value}\" is out of range; {said}",
    L"{setting} \"{value}\" does not convert; {said}",
    L"{setting} \"{value}\" is out of range",
    L"{setting} \"{value}\" does not convert",
    L"{path} is not there: nothing can be dialed",
    L"{path} is not there: 3CX calls nobody",
    L"{path} is not there, so notes are written as plain text",
    L"{path} is not there",
    L"{path}: GoldMine cannot dial through a path with blanks",
    L"{path}: whoever is no administrator may exchange it, too",
    L"{path}; the other registry view says {file}",
    L"{path} only shows what 3CX passes",
    L"{path} has quotes; the program says so in a box at every call",
    L"{path} has another letter case; the program says so in a box at every call",
    L"{path}; CorvaneCheck runs as administrator, and would start another GoldMine",
    L"{path}, as administrator like CorvaneCheck",
    L"{path} runs as administrator",
    L"{path} cannot be reached",
    L"{path} may not be listed",
    L"{path} could not be read to its end",
    L"{path} holds no recording yet",
    L"{path}: {count} files, the newest, {file}, {ago}",
    L"{path}: {count} file, the newest, {file}, {ago}",
    L"{path} (off: errors only)",
    L"{path} cannot be written: {error}",
    // What to do about them
    L"See whether it is there for this user; name it as \\\\Server\\Share\\Folder.",
    L"See whether {own}",
    L"Start GoldMine and log in.",
    L"Start CorvaneCheck as the user who runs GoldMine.",
    L"Start CorvaneTo3CX.exe without parameters {own}",
    L"Close and restart GoldMine; {own}",
    L"Close GoldMine and start it without \"Run as administrator\".",
    L"Log in to GoldMine{own}",
    L"Use GoldMine 6.7 or later.",
    L"Install 3CXPhone for Windows again; the Path in its registry key ends in \"\\\".",
    L"Install {own}",
    L"Put CorvaneCheck.exe into the folder of CorvaneTo3CX.exe.",
    L"Put 3CX's Command Line API plug-in into the folder of 3CXPhone for Windows.",
    L"Move both programs to a folder without blanks in its path, such as C:\\CorvaneTo3CX.",
    L"Press \"Set to log only ImportantEvents\" {own}",
    L"Remove the value of the other view, or set it to the same.",
    L"Give {own}",
    L"Let 3CX name recordings so, {own}",
    L"Correct them in the program's window and save them; {own}",
    L"Check \"Enable link between GoldMine and 3CX\" in the program's window.",
    L"Answer the box: that call waits for it.",
    L"As administrator: set CallNotifierPath below HKEY_LOCAL_MACHINE\\SOFTWARE\\3CX\\CRM of the "
    L"32-bit view to {path}, without quotes.",
    L"As administrator: icacls \"{path}\" /grant *S-1-5-32-545:(OI)(CI)M",
    L"As administrator: icacls {path} /inheritance:d, then icacls {path} /remove:g *S-1-5-11",
    L"As administrator: \"{path}\" /RegServer",
    L"{path}",
});

bool OnlyOf(std::wstring_view text, std::wstring_view characters, std::size_t most) {
    return text.size() <= most && text.find_first_not_of(characters) == std::wstring_view::npos;
}

constexpr std::wstring_view digits = L"0123456789";

// A count, a version, an error's number: with what users' languages put between digits.
bool IsCount(std::wstring_view text) {
    constexpr std::size_t longest = 12;
    return OnlyOf(text, L"0123456789.,-", longest) &&
           text.find_first_of(digits) != std::wstring_view::npos;
}

bool IsDate(std::wstring_view text) {
    constexpr std::size_t longest = 80;
    constexpr std::ptrdiff_t mostDigits = 14;
    return OnlyOf(text, L"0123456789 -./:AMPamp", longest) &&
           std::ranges::count_if(text, [](wchar_t each) {
               return digits.find(each) != std::wstring_view::npos;
           }) <= mostDigits;
}

bool IsAddress(std::wstring_view text) {
    constexpr std::size_t longest = 18;
    return text.starts_with(L"0x") && OnlyOf(text.substr(2), L"0123456789ABCDEF", longest);
}

// Words that no person and no number is among.
bool IsOwn(std::wstring_view text) {
    constexpr std::size_t longest = 250;
    std::size_t digitsTogether = 0;
    for (const wchar_t each : text) {
        digitsTogether = digits.find(each) == std::wstring_view::npos ? 0 : digitsTogether + 1;
        if (digitsTogether > 2 || each == L'\\')
            return false;
    }
    return text.size() <= longest;
}

bool IsWord(std::wstring_view text) {
    constexpr std::size_t longest = 30;
    return OnlyOf(text, L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz", longest);
}

bool IsSetting(std::wstring_view text) {
    return std::ranges::any_of(controlCatalogue, [&](const ControlSpec& row) {
        return row.name == text && row.has(ControlTrait::option);
    });
}

// "3 hours ago", with what may stand behind it.
bool IsAgo(std::wstring_view text) {
    const std::wstring_view time = text.substr(0, text.find(L" ago"));
    const std::wstring_view behind = text.substr(time.size());
    return (behind == L" ago" || behind == L" ago, bears no call identifier in round brackets") &&
           (time == L"less than a minute" || OnlyOf(time, L"0123456789 adehimnorstuy", 13));
}

// One that names its place; others are no paths where nothing before says so.
bool IsPath(std::wstring_view text) {
    if (text.starts_with(L'"'))
        text.remove_prefix(1);
    return text.starts_with(L"\\\\") || (text.size() > 2 && text.substr(1, 2) == L":\\");
}

// The file of a crash: a program's.
bool IsModule(std::wstring_view text) {
    const std::wstring capitals = UpperCase(text);
    return capitals.ends_with(L".DLL") || capitals.ends_with(L".EXE") ||
           capitals.ends_with(L".OCX");
}

bool IsAny(std::wstring_view) {
    return true;
}

std::wstring AsItIs(std::wstring_view text, Masking&) {
    return std::wstring(text);
}
std::wstring Hidden(std::wstring_view text, Masking&) {
    return HiddenText(text);
}
std::wstring MaskedNumber(std::wstring_view text, Masking& masking) {
    return masking.Number(text);
}
std::wstring MaskedPath(std::wstring_view text, Masking& masking) {
    return masking.Path(text);
}
std::wstring MaskedIdentifier(std::wstring_view text, Masking& masking) {
    return masking.CallIdentifier(text);
}

// What was stored where a number, or one of a few words belongs.
std::wstring MaskedValue(std::wstring_view text, Masking&) {
    constexpr std::size_t longest = 4;
    return OnlyOf(text, digits, longest) ? std::wstring(text) : HiddenText(text);
}

// What 3CX passed, with its switches, or a number to dial.
std::wstring MaskedParameters(std::wstring_view text, Masking& masking) {
    std::wstring masked;
    for (const std::wstring& token : CommandLineTokens(text)) {
        const auto [name, value] = SwitchIn(token);
        masked += masked.empty() ? L"" : L" ";
        if ((name == L"/N" || name == L"/T") && value.size() <= 1)
            masked += token;
        else if (name == L"/I" && token.starts_with(L"/I:"))
            masked += Join(L"/I:", masking.CallIdentifier(value));
        else if (name == L"/C" && token.starts_with(L"/C:"))
            masked += Join(L"/C:", masking.Number(value));
        else
            masked += masking.Number(token);
    }
    return masked;
}

// The description of a run-time error, with the procedures and the setting that it passed.
std::wstring MaskedError(std::wstring_view text, Masking& masking) {
    constexpr auto procedures = std::to_array<std::wstring_view>(
        {L"AddRefAndNotesToOpenCallDialog", L"ApplyGoldMineVersion", L"CheckGoldMineVersion",
         L"CreateHistoryForEvent", L"FindGoldMineExecutable", L"HTMLToText", L"LoadSettings",
         L"ParseCallParameters", L"ProcessCall", L"SaveSettings", L"SetUpLog"});
    using namespace ErrorNumber;
    constexpr auto numbers = std::to_array<std::int32_t>(
        {InvalidProcedureCall, Overflow, OutOfMemory, TypeMismatch, FileNotFound, PermissionDenied,
         PathNotFound, InvalidPropertyValue, CannotCreateObject, RemoteServerUnavailable, 0});
    std::wstring_view rest = text;
    while (rest.starts_with(L' '))
        rest.remove_prefix(1);
    for (auto end = rest.find(L": "); end != std::wstring_view::npos; end = rest.find(L": ")) {
        const std::wstring_view name = rest.substr(0, end);
        if (std::ranges::find(procedures, name) == procedures.end() && !IsSetting(name))
            break;
        rest.remove_prefix(end + 2);
    }
    const bool known = std::ranges::any_of(
        numbers, [&](auto number) { return rest == MakeRuntimeError(number).description; });
    return Join(text.substr(0, text.size() - rest.size()),
                known ? std::wstring(rest) : MaskedText(rest, masking));
}

struct Kind {
    std::wstring_view name;
    bool (*fits)(std::wstring_view);
    std::wstring (*masked)(std::wstring_view, Masking&);
};
constexpr auto kinds = std::to_array<Kind>({
    {L"address", &IsAddress, &AsItIs},
    {L"ago", &IsAgo, &AsItIs},
    {L"command", &IsWord, &AsItIs},
    {L"count", &IsCount, &AsItIs},
    {L"date", &IsDate, &AsItIs},
    {L"error", &IsAny, &MaskedError},
    {L"file", &IsAny, &MaskedPath},
    {L"identifier", &IsAny, &MaskedIdentifier},
    {L"module", &IsModule, &AsItIs},
    {L"number", &IsAny, &MaskedNumber},
    {L"own", &IsOwn, &AsItIs},
    {L"parameters", &IsAny, &MaskedParameters},
    {L"path", &IsPath, &MaskedPath},
    {L"said", &IsAny, &MaskedText},
    {L"setting", &IsSetting, &AsItIs},
    {L"text", &IsAny, &Hidden},
    {L"value", &IsAny, &MaskedValue},
});

struct Piece {
    std::wstring (*masked)(std::wstring_view, Masking&);
    std::wstring_view text;
};
using Pieces = std::vector<Piece>;

std::size_t BlanksAt(std::wstring_view text) {
    return std::min(text.find_first_not_of(L' '), text.size());
}

// How much of the text fits what the form has before its next brace; a blank fits any number of
// them.
std::optional<std::size_t> FittingLiteral(std::wstring_view literal, std::wstring_view text) {
    std::size_t at = 0;
    while (!literal.empty()) {
        if (at == text.size() || text[at] != literal[0])
            return std::nullopt;
        at += literal[0] == L' ' ? BlanksAt(text.substr(at)) : 1;
        literal.remove_prefix(1);
    }
    return at;
}

bool Fits(std::wstring_view form, std::wstring_view text, Pieces& pieces) {
    const auto open = std::min(form.find(L'{'), form.size());
    const auto length = FittingLiteral(form.substr(0, open), text);
    if (!length)
        return false;
    pieces.push_back({&AsItIs, text.substr(0, *length)});
    text.remove_prefix(*length);
    if (open == form.size())
        return text.empty();
    const auto close = form.find(L'}', open);
    const auto* const kind =
        std::ranges::find(kinds, form.substr(open + 1, close - open - 1), &Kind::name);
    form.remove_prefix(close + 1);
    const std::size_t known = pieces.size();
    for (std::size_t end = form.empty() ? text.size() : 0; end <= text.size(); ++end) {
        if (!form.empty() && (end == text.size() || text[end] != form[0]))
            continue;
        if (!kind->fits(text.substr(0, end)))
            continue;
        pieces.push_back({kind->masked, text.substr(0, end)});
        if (Fits(form, text.substr(end), pieces))
            return true;
        pieces.resize(known);
    }
    return false;
}

}  // namespace

std::wstring HiddenText(std::wstring_view text) {
    return text.empty() ? std::wstring()
                        : Join(L"(hidden: ", std::to_wstring(text.size()), L" characters)");
}

std::wstring MaskedText(std::wstring_view text, Masking& masking) {
    constexpr std::size_t longest = 4000;  // a form is sought from each of its places
    if (text.size() <= longest) {
        for (const std::wstring_view form : forms) {
            Pieces pieces;
            if (!Fits(form, text, pieces))
                continue;
            std::wstring masked;
            for (const Piece& piece : pieces)
                masked += piece.masked(piece.text, masking);
            return masked;
        }
    }
    return HiddenText(text);
}

}  // namespace corvane
