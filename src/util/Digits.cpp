#include "util/Digits.h"

namespace corvane {

std::wstring ExtractDigits(std::wstring_view text, bool allowDialCharacters, bool keepBlanks) {
    std::wstring kept;
    for (const wchar_t character : text) {
        const bool isDigit = character >= L'0' && character <= L'9';
        const bool isDialCharacter = character == L'#' || character == L'*';
        if (isDigit || (allowDialCharacters && isDialCharacter) ||
            (keepBlanks && character == L' ')) {
            kept += character;
        }
    }
    return kept;
}

}  // namespace corvane
