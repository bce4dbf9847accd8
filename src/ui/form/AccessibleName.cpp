#include "ui/form/AccessibleName.h"

#include <algorithm>

#include "util/Text.h"

namespace corvane {

namespace {

bool StandTogether(const ControlSpec& one, const ControlSpec& other) {
    return one.parent == other.parent && one.parentIndex == other.parentIndex;
}

bool SharesItsCaption(const ControlSpec& spec) {
    return std::count_if(controlCatalogue.begin(), controlCatalogue.end(),
                         [&spec](const ControlSpec& other) {
                             return other.kind == spec.kind && other.caption == spec.caption;
                         }) > 1;
}

// A box is read with what stands around it: a check box before it, a label behind it.
std::wstring NameOfBox(std::size_t row) {
    const ControlSpec& box = controlCatalogue[row];
    const ControlSpec& before = controlCatalogue[row - 1];
    if (before.kind == ControlKind::Label)
        return {};
    std::wstring name(TrimBlanks(before.caption));
    if (row + 1 < controlCatalogue.size()) {
        const ControlSpec& behind = controlCatalogue[row + 1];
        if (behind.kind == ControlKind::Label && StandTogether(box, behind))
            name.append(L" ").append(behind.caption);
    }
    return name;
}

// A group without a caption goes by its label, or by the option under which it stands.
std::wstring NameOfGroup(std::size_t row) {
    if (!controlCatalogue[row].caption.empty())
        return {};
    const ControlSpec& first = controlCatalogue[row + 1];
    const bool hasLabel = first.kind == ControlKind::Label;
    return std::wstring(hasLabel ? first.caption : controlCatalogue[row - 1].caption);
}

}  // namespace

std::wstring AccessibleName(std::size_t row) {
    const ControlSpec& spec = controlCatalogue[row];
    switch (spec.kind) {
        case ControlKind::TextBox:
            return NameOfBox(row);
        case ControlKind::Frame:
            return NameOfGroup(row);
        case ControlKind::TabStrip:
            return spec.name == L"tabstripOptions" ? L"Options" : L"Parameters";
        case ControlKind::CommandButton:
            return SharesItsCaption(spec) ? std::wstring(spec.tip) : std::wstring();
        default:
            return {};
    }
}

}  // namespace corvane
