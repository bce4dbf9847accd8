#include "support/windows/SystemWords.h"

#include <iterator>

namespace test_support {

std::wstring SystemWords(DWORD code) {
    wchar_t words[1000];
    const DWORD length =
        FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, code, 0,
                       words, static_cast<DWORD>(std::size(words)), nullptr);
    return {words, length};
}

}  // namespace test_support
