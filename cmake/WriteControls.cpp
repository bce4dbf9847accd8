// Writes the table of controls as text for user-interface tests and support: name, control id and
// kind of each, separated by tabs. Built and run by the build itself, on the building machine.

#include <cstdio>
#include <string>

#include "ui/form/ControlCatalogue.h"

namespace {

const char* NameOf(corvane::ControlKind kind) {
    switch (kind) {
        case corvane::ControlKind::Label:
            return "label";
        case corvane::ControlKind::TextBox:
            return "text box";
        case corvane::ControlKind::CheckBox:
            return "check box";
        case corvane::ControlKind::OptionButton:
            return "option button";
        case corvane::ControlKind::CommandButton:
            return "button";
        case corvane::ControlKind::Frame:
            return "frame";
        case corvane::ControlKind::TabStrip:
            return "tab strip";
    }
    return "";
}

// Members of a control array carry their index: lblParam(13).
std::string FullName(const corvane::ControlSpec& spec) {
    std::string name(spec.name.begin(), spec.name.end());
    int members = 0;
    for (const corvane::ControlSpec& other : corvane::controlCatalogue) {
        if (other.name == spec.name)
            ++members;
    }
    return members > 1 ? name + "(" + std::to_string(spec.index) + ")" : name;
}

}  // namespace

int main() {
    std::puts("name\tid\tkind");
    for (std::size_t row = 0; row < corvane::controlCatalogue.size(); ++row) {
        const corvane::ControlSpec& spec = corvane::controlCatalogue[row];
        std::printf("%s\t%d\t%s\n", FullName(spec).c_str(), corvane::ControlId(row),
                    NameOf(spec.kind));
    }
}
