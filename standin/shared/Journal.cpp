#include "shared/Journal.h"

#include "shared/Text.h"

namespace practice {

Journal::Journal(const std::wstring& file, bool fresh)
    : file_(CreateFileW(file.c_str(), FILE_APPEND_DATA,
                        FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                        fresh ? CREATE_ALWAYS : OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr)) {}

void Journal::WriteLine(std::wstring_view mark, std::wstring_view text) {
    const std::string line = ToUtf8(std::wstring(mark) + EscapeLine(text)) + '\n';
    DWORD written = 0;
    WriteFile(file_.get(), line.data(), static_cast<DWORD>(line.size()), &written, nullptr);
}

void Journal::Note(std::wstring_view text) {
    WriteLine(L"# ", text);
}

void Journal::Command(std::wstring_view text) {
    WriteLine(L"> ", text);
}

void Journal::Reply(std::wstring_view text) {
    WriteLine(L"< ", text);
}

void Journal::Failed(HRESULT result) {
    WriteLine(L"< ", L"HRESULT " + HexadecimalText(result));
}

void Journal::Event(std::wstring_view windowName, bool up, long windowHandle) {
    WriteLine(L"! ", L"WindowUpDown " + std::wstring(windowName) + (up ? L" 1 " : L" 0 ") +
                         std::to_wstring(windowHandle));
}

std::wstring HexadecimalText(HRESULT result) {
    constexpr std::wstring_view digits = L"0123456789ABCDEF";
    std::wstring text = L"0x";
    for (int shift = 28; shift >= 0; shift -= 4)
        text += digits[(static_cast<unsigned long>(result) >> shift) & 15];
    return text;
}

}  // namespace practice
