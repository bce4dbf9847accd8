#pragma once

#include <string>

// The commands that GoldMine gets, written out as the tests expect them. Arguments stand in the
// command as they are given here, so a test writes them escaped.
namespace end_to_end::gmapi {

inline std::string Escaped(const std::string& text) {
    std::string result;
    for (const char each : text) {
        switch (each) {
            case '&':
                result += "&amp;";
                break;
            case '"':
                result += "&quot;";
                break;
            case '\'':
                result += "&apos;";
                break;
            case '<':
                result += "&lt;";
                break;
            case '>':
                result += "&gt;";
                break;
            default:
                result += each;
        }
    }
    return result;
}

inline std::string Data(const std::string& name, const std::string& value) {
    return "<data name=\"" + name + "\">" + value + "</data>";
}

inline std::string Call(const std::string& call, const std::string& content) {
    return "<GMAPI call=\"" + call + "\">" + content + "</GMAPI>";
}

inline std::string Macro(const std::string& name) {
    return Call("Macro", Data("Macro", name));
}

inline std::string CallerID(const std::string& phone, const std::string& displayDialog,
                            const std::string& all) {
    return Call("CallerID", Data("Phone", phone) + Data("Description", "") +
                                Data("DisplayDialog", displayDialog) + Data("All", all) +
                                Data("UPhone", "0"));
}

inline std::string StatusMsg(const std::string& message) {
    return Call("StatusMsg", Data("Message", message) + Data("Delay", "10"));
}

inline std::string RecordObj(const std::string& command, const std::string& argument) {
    return Call("RecordObj",
                Data("Command", command) + (argument.empty() ? "" : Data("Argument", argument)));
}

inline std::string Query(const std::string& sql) {
    return Call("DataStream", Data("Command", "Query") + Data("SQL", sql) + Data("Filter", ""));
}

inline std::string Fetch(const std::string& area) {
    return Call("DataStream", Data("Command", "Fetch") + Data("Area", area) +
                                  Data("FetchCount", "1") + Data("Raw", "1") +
                                  Data("FieldDelimiter", "") + Data("RowDelimiter", ""));
}

inline std::string CloseStream(const std::string& area) {
    return Call("DataStream", Data("Command", "Close") + Data("Area", area));
}

inline std::string Register(const std::string& monitor) {
    return Call("RegisterWindowUpDown",
                Data("Window", "DIALOGSCHEDULECOMPLETE") + Data("Monitor", monitor));
}

inline std::string MenuCommand(const std::string& command) {
    return Call("MenuCommand", command);
}

inline std::string InsHist(const std::string& account, const std::string& recType,
                           const std::string& ref, const std::string& user = "MASTER") {
    return Call("InsHist", Data("AccNo", account) + Data("Activity", "") + Data("Duration", "") +
                               Data("OpRecID", "") + Data("RecType", recType) + Data("Ref", ref) +
                               Data("ResultCode", "") + Data("Notes", "") + Data("User", user) +
                               Data("Private", ""));
}

inline std::string PopCalHistItem(const std::string& recordId) {
    return Call("PopCalHistItem", Data("recID", recordId));
}

inline std::string WindowsList() {
    return "<GMAPI call=\"GetActiveWindowsList\"/>";
}

inline std::string SetControlText(const std::string& window, const std::string& id,
                                  const std::string& text) {
    return Call("SetControlText", Data("hWndParent", window) + Data("ID", id) + Data("Text", text));
}

}  // namespace end_to_end::gmapi
