#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>

namespace test_support {

// What GoldMine is asked and what it answers, written out as the tests expect it: Gmapi<char> for
// UTF-8 texts, Gmapi<wchar_t> for those that pass through the program. Arguments stand in the text
// as they are given here, so a test writes them escaped.
template <class Char>
struct Gmapi {
    using Text = std::basic_string<Char>;

    // Escaping ------------------------------------------------------------------------------------

    static Text Escaped(const Text& text) {
        Text result;
        for (const Char each : text) {
            switch (each) {
                case '&':
                    result += Ascii("&amp;");
                    break;
                case '"':
                    result += Ascii("&quot;");
                    break;
                case '\'':
                    result += Ascii("&apos;");
                    break;
                case '<':
                    result += Ascii("&lt;");
                    break;
                case '>':
                    result += Ascii("&gt;");
                    break;
                default:
                    result += each;
            }
        }
        return result;
    }

    // Also of the CR that XML would not keep otherwise.
    static Text Unescaped(Text text) {
        ReplaceAll(text, "&quot;", "\"");
        ReplaceAll(text, "&apos;", "'");
        ReplaceAll(text, "&lt;", "<");
        ReplaceAll(text, "&gt;", ">");
        ReplaceAll(text, "&#13;", "\r");
        ReplaceAll(text, "&amp;", "&");
        return text;
    }

    // Commands ------------------------------------------------------------------------------------

    static Text Data(const Text& name, const Text& value) {
        return Ascii("<data name=\"") + name + Ascii("\">") + value + Ascii("</data>");
    }

    static Text Call(const Text& call, const Text& content) {
        return Ascii("<GMAPI call=\"") + call + Ascii("\">") + content + Ascii("</GMAPI>");
    }

    static Text Macro(const Text& name) { return Command("Macro", {{"Macro", name}}); }

    static Text CallerID(const Text& phone, const Text& displayDialog, const Text& all) {
        return Command("CallerID", {{"Phone", phone},
                                    {"Description", ""},
                                    {"DisplayDialog", displayDialog},
                                    {"All", all},
                                    {"UPhone", "0"}});
    }

    static Text StatusMsg(const Text& message) {
        return Command("StatusMsg", {{"Message", message}, {"Delay", "10"}});
    }

    static Text RecordObj(const Text& command, const Text& argument) {
        if (argument.empty())
            return Command("RecordObj", {{"Command", command}});
        return Command("RecordObj", {{"Command", command}, {"Argument", argument}});
    }

    static Text Query(const Text& sql) {
        return Command("DataStream", {{"Command", "Query"}, {"SQL", sql}, {"Filter", ""}});
    }

    static Text Fetch(const Text& area) {
        return Command("DataStream", {{"Command", "Fetch"},
                                      {"Area", area},
                                      {"FetchCount", "1"},
                                      {"Raw", "1"},
                                      {"FieldDelimiter", ""},
                                      {"RowDelimiter", ""}});
    }

    static Text CloseStream(const Text& area) {
        return Command("DataStream", {{"Command", "Close"}, {"Area", area}});
    }

    static Text Register(const Text& monitor) {
        return Command("RegisterWindowUpDown",
                       {{"Window", "DIALOGSCHEDULECOMPLETE"}, {"Monitor", monitor}});
    }

    static Text MenuCommand(const Text& command) { return Call(Ascii("MenuCommand"), command); }

    static Text InsHist(const Text& account, const Text& recType, const Text& ref,
                        const Text& user = Ascii("MASTER")) {
        return Command("InsHist", {{"AccNo", account},
                                   {"Activity", ""},
                                   {"Duration", ""},
                                   {"OpRecID", ""},
                                   {"RecType", recType},
                                   {"Ref", ref},
                                   {"ResultCode", ""},
                                   {"Notes", ""},
                                   {"User", user},
                                   {"Private", ""}});
    }

    static Text PopCalHistItem(const Text& recordId) {
        return Command("PopCalHistItem", {{"recID", recordId}});
    }

    static Text WindowsList() { return Ascii("<GMAPI call=\"GetActiveWindowsList\"/>"); }

    static Text SetControlText(const Text& window, const Text& id, const Text& text) {
        return Command("SetControlText", {{"hWndParent", window}, {"ID", id}, {"Text", text}});
    }

    // Replies -------------------------------------------------------------------------------------

    // The value stands in it as given.
    static Text Reply(const Text& call, const Text& code, const Text& value) {
        return Call(call, Status(code, value));
    }

    // A packet. XML turns a raw CR into LF, so GoldMine writes it as a reference.
    static Text FetchReply(const Text& packet) {
        const Text rows = Data(Ascii("Rows"), Data(Ascii("RawReturn"), packet));
        return Call(Ascii("DataStream"),
                    Status(Ascii("1"), Ascii("1")) + Data(Ascii("Return"), rows));
    }

private:
    static Text Ascii(std::string_view text) { return Text(text.begin(), text.end()); }

    // One data element of a command. GMAPI's own words are ASCII.
    struct Field {
        Field(const char* itsName, Text itsValue)
            : name(Ascii(itsName)), value(std::move(itsValue)) {}
        Field(const char* itsName, const char* fixedValue)
            : name(Ascii(itsName)), value(Ascii(fixedValue)) {}

        Text name;
        Text value;
    };

    static Text Command(const char* call, std::initializer_list<Field> fields) {
        Text content;
        for (const Field& each : fields)
            content += Data(each.name, each.value);
        return Call(Ascii(call), content);
    }

    static Text Status(const Text& code, const Text& value) {
        return Ascii("<status code=\"") + code + Ascii("\">") + value + Ascii("</status>");
    }

    static void ReplaceAll(Text& text, std::string_view what, std::string_view by) {
        const Text found = Ascii(what);
        for (size_t at = 0; (at = text.find(found, at)) != Text::npos; at += by.size())
            text.replace(at, found.size(), Ascii(by));
    }
};

}  // namespace test_support
