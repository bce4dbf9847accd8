#include "platform/kit/OwnPlace.h"

#include "platform/kit/Handles.h"

namespace corvane {

namespace {

constexpr std::wstring_view nowhere = L"?";  // equals no path

// The path up to its last names, with the backslash; empty when it has no more than these.
std::wstring_view Above(std::wstring_view path, int names) {
    std::size_t backslash = path.size();
    for (; names > 0; --names) {
        if (backslash == 0 || backslash == std::wstring_view::npos)
            return {};
        backslash = path.find_last_of(L'\\', backslash - 1);
    }
    return backslash == std::wstring_view::npos ? std::wstring_view()
                                                : path.substr(0, backslash + 1);
}

bool Same(std::wstring_view actual, std::wstring_view expected) {
    return actual.empty() || expected.empty() ||
           CompareStringOrdinal(actual.data(), static_cast<int>(actual.size()), expected.data(),
                                static_cast<int>(expected.size()), TRUE) == CSTR_EQUAL;
}

}  // namespace

void OwnPlace::Path::Append(std::wstring_view text) {
    if (length_ + text.size() >= text_.size()) {
        length_ = 0;
        text = nowhere;
    }
    text.copy(text_.data() + length_, text.size());
    length_ += text.size();
    text_[length_] = L'\0';
}

// Where an opened file or folder stands, whatever its path led through; empty for "cannot tell".
OwnPlace::Path OwnPlace::PlaceOf(HANDLE opened) {
    std::array<wchar_t, 1024> place{};
    const DWORD length = GetFinalPathNameByHandleW(
        opened, place.data(), static_cast<DWORD>(place.size()), FILE_NAME_NORMALIZED);
    return Path(length < place.size() ? std::wstring_view(place.data(), length) : nowhere);
}

OwnPlace::Path OwnPlace::PlaceOfFolder(std::wstring_view path) {
    const UniqueHandle folder(
        CreateFileW(Path(path).c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                    nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    Path place = folder ? PlaceOf(folder.get()) : Path();
    if (!place.text().empty() && !place.text().ends_with(L'\\'))
        place.Append(L"\\");
    return place;
}

OwnPlace::OwnPlace(std::wstring_view path) : path_(path) {
    const std::wstring_view above = Above(path_.text(), 3);
    place_ = PlaceOfFolder(above);
    if (!place_.text().empty())
        place_.Append(path_.text().substr(above.size()));
}

bool OwnPlace::HasFolder() const {
    return Same(PlaceOfFolder(Above(path_.text(), 1)).text(), Above(place_.text(), 1));
}

bool OwnPlace::HasFile(HANDLE file) const {
    BY_HANDLE_FILE_INFORMATION information{};
    return Same(PlaceOf(file).text(), place_.text()) &&
           !(GetFileInformationByHandle(file, &information) && information.nNumberOfLinks > 1);
}

}  // namespace corvane
