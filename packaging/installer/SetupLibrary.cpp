// What the set-up calls in CorvaneSetup.dll. Each answers with an exit code of the set-up, 0 for
// "go on"; a text goes into a buffer of the caller's, of so many characters.

#include <exception>
#include <string>

#include "installer/Places.h"
#include "platform/kit/Windows.h"

#include <shlobj.h>

namespace {

using corvane::installer::Verdict;

void Hand(const std::wstring& text, wchar_t* buffer, int size) {
    lstrcpynW(buffer, text.c_str(), size);
}

// No exception leaves the library.
template <class Work>
int Answer(Work work) noexcept {
    try {
        return static_cast<int>(work());
    } catch (const std::exception&) {
        return static_cast<int>(Verdict::Failed);
    }
}

}  // namespace

extern "C" {

__declspec(dllexport) int CheckFolder(const wchar_t* folder, wchar_t* onDisk, int size) {
    return Answer([=] {
        const std::wstring path = corvane::installer::PathOnDisk(folder);
        Hand(path, onDisk, size);
        return corvane::installer::CheckPath(path);
    });
}

__declspec(dllexport) int MakeProgramFolder(const wchar_t* folder, int madeBySetup) {
    return Answer([=] { return corvane::installer::MakeProgramFolder(folder, madeBySetup != 0); });
}

__declspec(dllexport) int MakeLog(wchar_t* movedTo, int size) {
    return Answer([=] {
        wchar_t common[MAX_PATH];
        if (FAILED(SHGetFolderPathW(nullptr, CSIDL_COMMON_APPDATA, nullptr, 0, common)))
            return Verdict::Failed;
        std::wstring aside;
        const Verdict verdict = corvane::installer::MakeLog(common, aside);
        Hand(aside, movedTo, size);
        return verdict;
    });
}
}
