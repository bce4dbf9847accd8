#include "ui/form/AccessibleName.h"

#include "util/Text.h"

namespace corvane {

namespace {

bool StandTogether(const ControlSpec& one, const ControlSpec& other) {
    return one.parent == other.parent && one.parentIndex == other.parentIndex;
}

bool SharesItsCaption(const ControlSpec& spec) {
    int sharers = 0;
    for (std::size_t row = 0; row < controlCount; ++row)
        sharers += SpecOf(row).kind == spec.kind && SpecOf(row).caption == spec.caption ? 1 : 0;
    return sharers > 1;
}

// A box is read with what stands around it: a check box before it, a label behind it.
std::wstring NameOfBox(std::size_t row) {
    const ControlSpec& box = SpecOf(row);
    const ControlSpec& before = SpecOf(row - 1);
    if (before.kind == ControlKind::Label)
        return {};
    std::wstring name(TrimBlanks(before.caption));
    if (row + 1 < controlCount) {
        const ControlSpec& behind = SpecOf(row + 1);
        if (behind.kind == ControlKind::Label && StandTogether(box, behind))
            name.append(L" ").append(behind.caption);
    }
    return name;
}

// A group without a caption goes by its label, or by the option under which it stands.
std::wstring NameOfGroup(std::size_t row) {
    if (!SpecOf(row).caption.empty())
        return {};
    const ControlSpec& first = SpecOf(row + 1);
    const bool hasLabel = first.kind == ControlKind::Label;
    return std::wstring(hasLabel ? first.caption : SpecOf(row - 1).caption);
}

}  // namespace

std::wstring AccessibleName(std::size_t row) {
    const ControlSpec& spec = SpecOf(row);
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
