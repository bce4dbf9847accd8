#include "check/report/Masking.h"

#include <algorithm>
#include <array>

#include "util/Digits.h"
#include "util/Text.h"

namespace corvane {

namespace {

// As they are named on every computer, in capitals.
constexpr auto commonNames = std::to_array<std::wstring_view>({
    L"3CX",
    L"3CXPHONE",
    L"3CXPHONE FOR WINDOWS",
    L"APPDATA",
    L"CALLTRIGGERCMD.EXE",
    L"COMMANDLINEAPIPLUGIN.DLL",
    L"CORVANECHECK.EXE",
    L"CORVANETO3CX",
    L"CORVANETO3CX.EXE",
    L"CORVANETO3CX.LOG",
    L"DESKTOP",
    L"ECHOPARAMS.CMD",
    L"GM.INI",
    L"GMW.EXE",
    L"GOLDMINE",
    L"HALVORN SYSTEMS",
    L"LOCAL",
    L"PROGRAM FILES",
    L"PROGRAM FILES (X86)",
    L"PROGRAMDATA",
    L"RECORDINGS",
    L"ROAMING",
    L"SYSTEM32",
    L"SYSWOW64",
    L"USERS",
    L"WINDOWS",
});
constexpr auto commonEndings = std::to_array<std::wstring_view>(
    {L".BAK-CORVANETO3CX", L".CMD", L".DLL", L".EXE", L".INI", L".LOG", L".MP3", L".WAV"});

template <std::size_t count>
bool IsAmong(const std::array<std::wstring_view, count>& texts, std::wstring_view text) {
    return std::ranges::find(texts, UpperCase(text)) != texts.end();
}

bool IsDigit(wchar_t each) {
    return each >= L'0' && each <= L'9';
}

// What stands between the digits of a number.
bool JoinsDigits(wchar_t each) {
    return std::wstring_view(L" +-()./").find(each) != std::wstring_view::npos;
}

bool IsPunctuation(wchar_t each) {
    return each >= L' ' && each < 0x7F && !IsDigit(each) && !(each >= L'A' && each <= L'Z') &&
           !(each >= L'a' && each <= L'z');
}

// How long the number is that the text begins with, and the name, which may be of any script.
std::size_t NumberAt(std::wstring_view text) {
    std::size_t length = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (IsDigit(text[at]))
            length = at + 1;
        else if (length == 0 || !JoinsDigits(text[at]))
            break;
    }
    return length;
}
std::size_t NameAt(std::wstring_view text) {
    const auto* const end = std::ranges::find_if(
        text, [](wchar_t each) { return IsDigit(each) || IsPunctuation(each); });
    return static_cast<std::size_t>(end - text.begin());
}

}  // namespace

std::wstring Masking::Name(std::wstring_view text) {
    const auto number = names_.try_emplace(UpperCase(text), names_.size() + 1).first->second;
    return Join(L"name-", std::to_wstring(number));
}

std::wstring Masking::Digits(std::wstring_view text) {
    constexpr std::size_t shownOfLong = 2;
    constexpr std::size_t shortest = 6;
    // The same number comes with and without what its area and country put before it.
    constexpr std::size_t telling = 7;
    const std::wstring digits = ExtractDigits(text, false, false);
    const bool isLong = digits.size() >= shortest;
    std::size_t hidden = digits.size() - (isLong ? shownOfLong : 0);
    std::wstring masked(text);
    for (wchar_t& each : masked) {
        if (IsDigit(each) && hidden > 0) {
            each = L'#';
            --hidden;
        }
    }
    if (!isLong)
        return masked;
    const auto last = [&](std::size_t count) {
        return digits.substr(digits.size() - std::min(digits.size(), count));
    };
    std::size_t& known = endings_[last(shownOfLong)];
    const auto [number, isNew] = numbers_.try_emplace(last(telling), known + 1);
    known += isNew ? 1 : 0;
    return number->second == 1 ? masked : Join(masked, L"~", std::to_wstring(number->second));
}

std::wstring Masking::Number(std::wstring_view text) {
    std::wstring masked;
    while (!text.empty()) {
        std::size_t length = NumberAt(text);
        if (length > 0) {
            masked += Digits(text.substr(0, length));
        } else if (length = NameAt(text); length > 0) {
            const std::wstring_view word = text.substr(0, length);
            masked += word == L"x" ? std::wstring(word) : Name(word);  // of an extension
        } else {
            masked += text[0];
            length = 1;
        }
        text.remove_prefix(length);
    }
    return masked;
}

std::wstring Masking::CallIdentifier(std::wstring_view text) {
    constexpr std::size_t longest = 6;
    if (text.size() > longest || !std::ranges::all_of(text, &IsDigit))
        return Number(text);
    identifiers_.emplace(text);
    return std::wstring(text);
}

std::wstring Masking::FileName(std::wstring_view text) {
    const bool isDrive = text.size() == 2 && text[1] == L':';
    if (text.empty() || isDrive || IsAmong(commonNames, text))
        return std::wstring(text);
    std::wstring_view ending = text.substr(std::min(text.size(), text.rfind(L'.')));
    if (!IsAmong(commonEndings, ending))
        ending = {};
    const std::wstring_view stem = text.substr(0, text.size() - ending.size());
    const auto open = stem.rfind(L'(');
    if (open != std::wstring_view::npos && stem.ends_with(L')')) {
        const std::wstring_view inside = stem.substr(open + 1, stem.size() - open - 2);
        if (!inside.empty() && identifiers_.contains(inside))
            return Join(Number(stem.substr(0, open)), stem.substr(open), ending);
    }
    constexpr std::size_t fewDigits = 2;
    const bool isName = ExtractDigits(stem, false, false).size() <= fewDigits;
    return Join(isName ? Name(stem) : Number(stem), ending);
}

std::wstring Masking::Path(std::wstring_view text) {
    std::wstring masked;
    while (true) {
        const auto end = std::min(text.find_first_of(L"\\/\""), text.size());
        masked += FileName(text.substr(0, end));
        if (end == text.size())
            return masked;
        masked += text[end];
        text.remove_prefix(end + 1);
    }
}

}  // namespace corvane
