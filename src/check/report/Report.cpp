#include "check/report/Report.h"

#include <algorithm>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "check/Arguments.h"
#include "check/calls/CallLog.h"
#include "check/calls/CallTable.h"
#include "check/number/NumberParts.h"
#include "check/Output.h"
#include "check/report/EndOfLog.h"
#include "check/report/MaskedText.h"
#include "check/report/Masking.h"
#include "check/report/ReportFiles.h"
#include "check/report/ReportParts.h"
#include "check/report/Zip.h"
#include "check/Table.h"
#include "check/wiring/Wiring.h"
#include "check/wiring/WiringJson.h"
#include "check/WithinTime.h"
#include "util/Digits.h"
#include "util/ErrorReport.h"
#include "util/Text.h"

namespace corvane {

const std::wstring_view reportHelp =
    L"CorvaneCheck report [<file.zip>] [--number <text>] [--unmasked]\n"
    L"\n"
    L"Writes one zip file for support, to the desktop unless a file is named: what wiring and "
    L"calls\n"
    L"tell, the settings, the end of the log, and versions. In numbers all but the last digits\n"
    L"become \"#\", and names become \"name-1\" and so on. Nothing else is changed, nothing is "
    L"sent,\n"
    L"and a file that is there already is not replaced. It ends within fifteen seconds.\n"
    L"\n"
    L"  --number <text>  also what becomes of this number\n"
    L"  --unmasked       numbers and names as they are\n"
    L"\n"
    L"Exit code: 0 it is written, 1 written without a part that could not be had, 3 not "
    L"understood\n"
    L"or not written.\n";

namespace {

constexpr std::uint64_t bytesOfCalls = std::uint64_t{16} << 20U;
constexpr std::uint64_t bytesOfTail = std::uint64_t{512} << 10U;
constexpr std::size_t mostCalls = 500;
constexpr std::size_t mostLines = 2000;

// A file of the report.
struct Part {
    std::wstring name;
    std::wstring_view what;
    std::wstring text;
    std::wstring whyNot = {};  // empty when it could be had
};

std::wstring ReasonInOneLine(const RuntimeError& error) {
    return std::wstring(
        TrimBlanks(ReplaceAll(ReplaceAll(error.description, lineBreak, L" "), L"\n", L" ")));
}

// What a work comes to; it may be left behind, so it owns what it uses.
template <class Work>
auto InTime(std::chrono::milliseconds limit, Work work) {
    struct Outcome {
        std::optional<decltype(work())> result;
        RuntimeError error;
    };
    const auto outcome = std::make_shared<Outcome>();
    if (!RunWithin(limit, {[outcome, work] {
                       try {
                           outcome->result = work();
                       } catch (...) {
                           outcome->error = ErrorReport::CurrentError();
                       }
                   }})) {
        RuntimeError late = MakeRuntimeError(ErrorNumber::PathNotFound);
        late.description = L"does not answer";
        throw late;
    }
    if (!outcome->result)
        throw outcome->error;
    return std::move(*outcome->result);
}

class Report {
public:
    Report(const ReportSurroundings& around, bool masked) : around_(around), masked_(masked) {}

    void Collect(const std::optional<std::wstring>& number) {
        // The log first: it tells call identifiers, which stay as they are.
        Add(L"calls.txt", L"what the log says about the last calls", [&] { return Calls(); });
        Add(L"log-tail.txt", L"the log's last lines", [&] { return LogTail(); });
        const auto links = Links();
        Add(L"wiring.txt", L"each link between GoldMine and 3CX",
            [&] { return WiringText(links); });
        Add(L"wiring.json", L"the same for programs", [&] { return WiringJson(links); });
        Add(L"settings.txt", L"this user's settings", [&] { return Settings(); });
        Add(L"versions.txt", L"programs and Windows", [&] { return VersionsText(); });
        if (number)
            Add(L"number.txt", L"what becomes of a number", [&] { return OfNumber(*number); });
        parts_.insert(parts_.begin(), {L"contents.txt", L"what this report is", Contents()});
    }

    [[nodiscard]] std::string Bytes() const {
        Zip zip(around_.now);
        for (const Part& part : parts_)
            zip.Add(around_.files.Utf8(part.name), FileBytes(part));
        return zip.Bytes();
    }

    [[nodiscard]] std::wstring Listing() const {
        Table table({{L"File"}, {L"Bytes", Table::Side::Right}, {L"What"}});
        for (const Part& part : parts_) {
            table.Add({part.name, std::to_wstring(FileBytes(part).size()),
                       part.whyNot.empty() ? std::wstring(part.what)
                                           : Join(part.what, L": ", part.whyNot)});
        }
        return table.Text();
    }

    [[nodiscard]] std::wstring_view MaskingText() const {
        return masked_ ? L"Masked: in numbers all but the last digits are \"#\", names are "
                         L"\"name-1\" and so on.\nLook at the files before you send them: masking "
                         L"cannot foresee everything.\n"
                       : L"Not masked: numbers and names stand in it as they are. Look at the "
                         L"files before you send them.\n";
    }

    [[nodiscard]] bool IsWhole() const {
        return std::ranges::all_of(parts_, [](const Part& part) { return part.whyNot.empty(); });
    }

private:
    void Add(std::wstring_view name, std::wstring_view what,
             const std::function<std::wstring()>& text) {
        Part part{std::wstring(name), what, L""};
        try {
            part.text = text();
        } catch (...) {
            const RuntimeError error = ErrorReport::CurrentError();
            part.whyNot = ReasonInOneLine(error);
            part.text = Join(L"Not to be had: error ", std::to_wstring(error.number), L", ",
                             Masked(part.whyNot), L"\n");
        }
        parts_.push_back(std::move(part));
    }

    [[nodiscard]] Masking* MaskingIfAny() { return masked_ ? &masking_ : nullptr; }
    [[nodiscard]] std::wstring Masked(const std::wstring& text) {
        return masked_ ? MaskedText(text, masking_) : text;
    }
    [[nodiscard]] std::wstring MaskedPath(const std::wstring& text) {
        return masked_ ? masking_.Path(text) : text;
    }

    [[nodiscard]] std::wstring Calls() {
        EndOfLog end(around_.logs, around_.logPath, bytesOfCalls, MaskingIfAny());
        return CallTableText(ReadCallLog(around_.logs, end, {}, mostCalls));
    }

    [[nodiscard]] std::wstring LogTail() {
        EndOfLog end(around_.logs, around_.logPath, bytesOfTail, MaskingIfAny());
        LogReader reader(end);
        std::deque<std::wstring> lines;
        while (const auto line = reader.Next()) {
            lines.push_back(around_.logs.TextFromLog(*line) + L"\n");
            if (lines.size() > mostLines)
                lines.pop_front();
        }
        std::wstring text;
        for (const std::wstring& line : lines)
            text += line;
        return text;
    }

    [[nodiscard]] std::vector<Findings::Told> Links() {
        auto links = LookAtLinks(around_.inSurroundings, around_.linksTime);
        for (auto& [link, finding] : links) {
            finding.text = Masked(finding.text);
            finding.fix = finding.fix.empty() ? L"" : Masked(finding.fix);
        }
        return links;
    }

    // A setting that is none of its usual texts may hold whatever its user typed.
    [[nodiscard]] std::wstring MaskedSetting(const std::wstring& text,
                                             const std::wstring& byDefault) {
        constexpr std::size_t mostDigits = 4;
        const bool telling = ExtractDigits(text, false, false).size() > mostDigits ||
                             text.find_first_not_of(L"0123456789#()-+*/. ") != std::wstring::npos;
        return !telling || text == byDefault || text == L"True" || text == L"False"
                   ? text
                   : MaskedPath(text);
    }

    [[nodiscard]] std::wstring Settings() {
        const auto settings = InTime(around_.partTime, [in = around_.inSurroundings] {
            std::vector<SavedSetting> saved;
            in([&](const CheckSurroundings& here) { saved = SavedSettings(here); });
            return saved;
        });
        Table table({{L"Setting"}, {L"Saved"}, {L"Default"}, {L""}});
        for (const SavedSetting& setting : settings) {
            table.Add({setting.name,
                       setting.saved ? MaskedSetting(*setting.saved, setting.byDefault)
                                     : std::wstring(L"(missing)"),
                       setting.byDefault, std::wstring(setting.note)});
        }
        return table.Text();
    }

    [[nodiscard]] std::wstring VersionsText() {
        const auto versions = InTime(around_.partTime, [in = around_.inSurroundings] {
            std::vector<Version> found;
            in([&](const CheckSurroundings& here) { found = Versions(here); });
            return found;
        });
        Table table({{}, {}, {}});
        for (const Version& each : versions)
            table.Add({std::wstring(each.what), each.version, MaskedPath(each.path)});
        return table.Text();
    }

    [[nodiscard]] std::wstring OfNumber(const std::wstring& number) {
        auto [callerID, toDial] = InTime(around_.partTime, [in = around_.inSurroundings, number] {
            std::pair<NumberPart, NumberPart> parts;
            in([&](const CheckSurroundings& here) {
                parts = {AsCallerID(number, here), AsNumberToDial(number, here)};
            });
            return parts;
        });
        for (NumberPart* part : {&callerID, &toDial}) {
            for (auto& [what, text] : part->rows) {
                const bool isNumber = what == L"received" || what == L"digits" ||
                                      what == L"searched as" || what == L"dialed";
                text = masked_ && isNumber ? masking_.Number(text) : Masked(text);
            }
            for (std::wstring& warning : part->warnings)
                warning = Masked(warning);
        }
        return Join(NumberPartText(callerIDTitle, callerID), L"\n",
                    NumberPartText(numberToDialTitle, toDial));
    }

    [[nodiscard]] std::wstring Contents() const {
        Table table({{}, {}});
        for (const Part& part : parts_) {
            table.Add({part.name, part.whyNot.empty() ? std::wstring(part.what)
                                                      : Join(part.what, L": could not be had")});
        }
        return Join(L"A report on what links GoldMine with 3CX, for support.\n\nMade on ",
                    DateTimeText(around_.now), L" by CorvaneCheck ", around_.versionText, L".\n",
                    MaskingText(), L"\n", table.Text(),
                    L"\nA number keeps its mask in all files; \"~2\" behind it tells it from "
                    L"another that ends alike.\nCall identifiers of 3CX, times, versions and the "
                    L"program's own words are never masked.\nOf a text that is not known only "
                    L"the length is told. The log of 3CX's plug-in is not in the report.\n");
    }

    [[nodiscard]] std::string FileBytes(const Part& part) const {
        // What it is for a Windows editor.
        constexpr std::string_view utf8Mark = "\xef\xbb\xbf";
        const bool isText = part.name.ends_with(L".txt");
        return std::string(isText ? utf8Mark : "") +
               around_.files.Utf8(isText ? WithLineBreaks(part.text) : part.text);
    }

    const ReportSurroundings& around_;
    bool masked_;
    Masking masking_;
    std::vector<Part> parts_;
};

// "CorvaneReport-2026-11-22-052301.zip"
std::wstring UsualName(LogTime now) {
    return Join(L"CorvaneReport-", ReplaceAll(ReplaceAll(DateTimeText(now), L" ", L"-"), L":", L""),
                L".zip");
}

}  // namespace

int RunReport(std::span<const std::wstring> given, Output& output,
              const ReportSurroundings& around) {
    const Arguments arguments(given, {{L"--unmasked"}, {L"--number", true}});
    if (arguments.others().size() > 1) {
        throw WrongUse{
            Join(L"Not understood: ", Quoted(arguments.others()[1]), L"; one file is written.")};
    }
    const std::wstring usual =
        around.usualFolder.empty()
            ? UsualName(around.now)
            : Join(AddTrailingBackslash(around.usualFolder), UsualName(around.now));
    const std::wstring path =
        around.files.FullPath(arguments.others().empty() ? usual : arguments.others().front());
    if (around.files.Exists(path)) {
        output.WriteError(Join(path, L" is there already; nothing was written.\n"));
        return ExitCode::wrongUse;
    }
    Report report(around, !arguments.Has(L"--unmasked"));
    report.Collect(arguments.ValueOf(L"--number"));
    try {
        around.files.WriteNew(path, report.Bytes());
    } catch (const RuntimeError& error) {
        output.WriteError(Join(ReasonInOneLine(error), L"\n"));
        return ExitCode::wrongUse;
    }
    output.Write(Join(L"Wrote ", path, L"\n\n", report.Listing(), L"\n", report.MaskingText()));
    return report.IsWhole() ? ExitCode::fine : ExitCode::warnings;
}

}  // namespace corvane
