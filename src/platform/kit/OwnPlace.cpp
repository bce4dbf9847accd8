#include "platform/kit/OwnPlace.h"

#include <string_view>

#include "platform/kit/Handles.h"
#include "util/RuntimeError.h"
#include "util/Text.h"

namespace corvane {

namespace {

// Where an opened file or folder stands, whatever its path led through; empty for "cannot tell".
std::wstring PlaceOf(HANDLE opened) {
    std::wstring place(GetFinalPathNameByHandleW(opened, nullptr, 0, FILE_NAME_NORMALIZED), L'\0');
    place.resize(GetFinalPathNameByHandleW(opened, place.data(), static_cast<DWORD>(place.size()),
                                           FILE_NAME_NORMALIZED));
    return place;
}

std::wstring PlaceOfFolder(const std::wstring& path) {
    const UniqueHandle folder(
        CreateFileW(path.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                    nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    const std::wstring place = folder ? PlaceOf(folder.get()) : std::wstring();
    return place.empty() ? place : AddTrailingBackslash(place);
}

// The path up to its last names, with the backslash; empty when it has no more than these.
std::wstring Above(const std::wstring& path, int names) {
    std::size_t backslash = path.size();
    for (; names > 0; --names) {
        if (backslash == 0 || backslash == std::wstring::npos)
            return {};
        backslash = path.find_last_of(L'\\', backslash - 1);
    }
    return backslash == std::wstring::npos ? std::wstring() : path.substr(0, backslash + 1);
}

[[noreturn]] void Refuse() {
    RuntimeError error = MakeRuntimeError(ErrorNumber::PermissionDenied);
    error.description += L" (it leads to another place)";
    throw error;
}

void Compare(const std::wstring& actual, const std::wstring& expected) {
    if (actual.empty() || expected.empty())
        return;
    if (CompareStringOrdinal(actual.data(), static_cast<int>(actual.size()), expected.data(),
                             static_cast<int>(expected.size()), TRUE) != CSTR_EQUAL) {
        Refuse();
    }
}

}  // namespace

OwnPlace::OwnPlace(const std::wstring& path) : path_(path) {
    const std::wstring above = Above(path, 3);
    if (const std::wstring place = PlaceOfFolder(above); !place.empty())
        place_ = place + path.substr(above.size());
}

void OwnPlace::CheckFolder() const {
    Compare(PlaceOfFolder(Above(path_, 1)), Above(place_, 1));
}

void OwnPlace::CheckFile(HANDLE file) const {
    Compare(PlaceOf(file), place_);
    BY_HANDLE_FILE_INFORMATION information{};
    if (GetFileInformationByHandle(file, &information) && information.nNumberOfLinks > 1)
        Refuse();
}

}  // namespace corvane
