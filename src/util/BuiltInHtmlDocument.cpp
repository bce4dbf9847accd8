#include "util/BuiltInHtmlDocument.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "util/Text.h"

namespace corvane {

namespace {

constexpr auto npos = std::wstring_view::npos;

wchar_t Lower(wchar_t character) {
    return character >= L'A' && character <= L'Z' ? static_cast<wchar_t>(character - L'A' + L'a')
                                                  : character;
}

bool EqualsIgnoringCase(std::wstring_view text, std::wstring_view lower) {
    return std::equal(text.begin(), text.end(), lower.begin(), lower.end(),
                      [](wchar_t a, wchar_t b) { return Lower(a) == b; });
}

bool IsLetter(wchar_t character) {
    const wchar_t lower = Lower(character);
    return lower >= L'a' && lower <= L'z';
}

bool IsWhiteSpace(wchar_t character) {
    return character == L' ' || character == L'\t' || character == L'\r' || character == L'\n' ||
           character == L'\f';
}

enum class PieceKind { Text, OpenTag, CloseTag, Other };

// One piece of an HTML text: text, a tag, or what is never shown (comment, declaration).
struct Piece {
    PieceKind kind = PieceKind::Text;
    std::wstring_view name;  // of a tag
    std::size_t begin = 0;
    std::size_t end = 0;
};

// Walks an HTML text once, piece by piece; whatever is unclosed reaches to the end.
class Scanner {
public:
    explicit Scanner(std::wstring_view html) : html_(html) {}

    bool Next(Piece& piece) {
        if (at_ >= html_.size())
            return false;
        piece = {};
        piece.begin = at_;
        if (!rawElement_.empty())
            ScanRawText(piece);
        else if (html_[at_] == L'<')
            ScanMarkup(piece);
        else
            ScanText(piece);
        piece.end = at_;
        return true;
    }

private:
    void ScanText(Piece& piece) {
        piece.kind = PieceKind::Text;
        at_ = std::min(html_.find(L'<', at_ + 1), html_.size());
    }

    void ScanMarkup(Piece& piece) {
        const wchar_t next = at_ + 1 < html_.size() ? html_[at_ + 1] : L'\0';
        if (html_.substr(at_).starts_with(L"<!--")) {
            piece.kind = PieceKind::Other;
            SkipBehind(L"-->", at_ + 4);
        } else if (next == L'!' || next == L'?') {
            piece.kind = PieceKind::Other;
            SkipBehind(L">", at_ + 2);
        } else if (next == L'/' && at_ + 2 < html_.size() && IsLetter(html_[at_ + 2])) {
            ScanTag(piece, PieceKind::CloseTag, at_ + 2);
        } else if (IsLetter(next)) {
            ScanTag(piece, PieceKind::OpenTag, at_ + 1);
            if (EqualsIgnoringCase(piece.name, L"script") ||
                EqualsIgnoringCase(piece.name, L"style")) {
                rawElement_ = piece.name;
            }
        } else {
            ScanText(piece);  // a lone "<" is text
        }
    }

    void ScanTag(Piece& piece, PieceKind kind, std::size_t nameBegin) {
        std::size_t nameEnd = nameBegin;
        while (nameEnd < html_.size() && !IsWhiteSpace(html_[nameEnd]) && html_[nameEnd] != L'>' &&
               html_[nameEnd] != L'/') {
            ++nameEnd;
        }
        piece.name = html_.substr(nameBegin, nameEnd - nameBegin);
        // A ">" inside a quoted attribute does not end the tag. A quote begins one only behind "=";
        // anywhere else (title=it's) it is a letter like any other.
        wchar_t quote = L'\0';
        bool behindEquals = false;
        for (at_ = nameEnd; at_ < html_.size(); ++at_) {
            const wchar_t character = html_[at_];
            if (quote != L'\0') {
                if (character == quote)
                    quote = L'\0';
            } else if (behindEquals && (character == L'"' || character == L'\'')) {
                quote = character;
            } else if (character == L'>') {
                ++at_;
                piece.kind = kind;
                return;
            }
            behindEquals = character == L'=' || (behindEquals && IsWhiteSpace(character));
        }
        piece.kind = PieceKind::Other;
    }

    // The content of a script or a style sheet, up to its closing tag.
    void ScanRawText(Piece& piece) {
        piece.kind = PieceKind::Other;
        const std::wstring_view element = rawElement_;
        rawElement_ = {};
        for (;;) {
            at_ = html_.find(L"</", at_);
            if (at_ == npos) {
                at_ = html_.size();
                return;
            }
            const std::wstring_view name = html_.substr(at_ + 2, element.size());
            if (name.size() == element.size() &&
                std::equal(name.begin(), name.end(), element.begin(),
                           [](wchar_t a, wchar_t b) { return Lower(a) == Lower(b); })) {
                return;
            }
            at_ += 2;
        }
    }

    void SkipBehind(std::wstring_view end, std::size_t from) {
        const auto hit = html_.find(end, from);
        at_ = hit == npos ? html_.size() : hit + end.size();
    }

    std::wstring_view html_;
    std::wstring_view rawElement_;
    std::size_t at_ = 0;
};

// Where the body's content begins; npos when the text is a mere fragment.
std::size_t StartOfBody(std::wstring_view html) {
    std::size_t behindHead = npos;
    std::size_t behindHtml = npos;
    bool inHead = false;
    Scanner scanner(html);
    Piece piece;
    while (scanner.Next(piece)) {
        if (piece.kind == PieceKind::OpenTag && EqualsIgnoringCase(piece.name, L"body"))
            return piece.end;
        if (piece.kind == PieceKind::OpenTag && EqualsIgnoringCase(piece.name, L"head"))
            inHead = true;
        if (piece.kind == PieceKind::CloseTag && EqualsIgnoringCase(piece.name, L"head")) {
            inHead = false;
            behindHead = piece.end;
        }
        // What stands in a head is not seen.
        if (piece.kind == PieceKind::OpenTag && EqualsIgnoringCase(piece.name, L"html") && !inHead)
            behindHtml = piece.end;
    }
    return behindHead != npos ? behindHead : behindHtml;
}

struct NamedCharacter {
    std::wstring_view name;
    wchar_t character;
};
constexpr auto namedCharacters = std::to_array<NamedCharacter>({
    {L"amp", L'&'},
    {L"lt", L'<'},
    {L"gt", L'>'},
    {L"quot", L'"'},
    {L"apos", L'\''},
    {L"nbsp", L'\x00A0'},
    {L"copy", L'\x00A9'},
    {L"reg", L'\x00AE'},
    {L"euro", L'\x20AC'},
});

// The character of a numeric reference's digits ("65" or "x41"); 0 when it is none.
char32_t NumericReference(std::wstring_view digits) {
    const bool isHex = !digits.empty() && Lower(digits.front()) == L'x';
    if (isHex)
        digits.remove_prefix(1);
    if (digits.empty())
        return 0;
    char32_t code = 0;
    for (const wchar_t digit : digits) {
        const wchar_t lower = Lower(digit);
        char32_t value = 0;
        if (lower >= L'0' && lower <= L'9')
            value = static_cast<char32_t>(lower - L'0');
        else if (isHex && lower >= L'a' && lower <= L'f')
            value = static_cast<char32_t>(lower - L'a') + 10;
        else
            return 0;
        code = code * (isHex ? 16 : 10) + value;
        if (code > 0x10FFFF)
            return 0;
    }
    return code;
}

void AppendCodePoint(std::wstring& text, char32_t code) {
    if (sizeof(wchar_t) == 2 && code > 0xFFFF) {
        code -= 0x10000;
        text += static_cast<wchar_t>(0xD800 + (code >> 10));
        text += static_cast<wchar_t>(0xDC00 + (code & 0x3FF));
    } else {
        text += static_cast<wchar_t>(code);
    }
}

// Appends what the entity at the front of the text stands for; the length that it takes, 0 when
// it is none.
std::size_t AppendEntity(std::wstring& text, std::wstring_view source) {
    constexpr std::size_t longestName = 10;
    const auto end = source.substr(0, longestName + 2).find(L';');
    if (end == npos)
        return 0;
    const std::wstring_view name = source.substr(1, end - 1);
    if (name.starts_with(L'#')) {
        const char32_t code = NumericReference(name.substr(1));
        if (code == 0)
            return 0;
        AppendCodePoint(text, code);
        return end + 1;
    }
    for (const NamedCharacter& each : namedCharacters) {
        if (each.name != name)
            continue;
        text += each.character;
        return end + 1;
    }
    return 0;
}

// White space counts once, as in a browser.
void AppendVisible(std::wstring& text, std::wstring_view source) {
    for (std::size_t at = 0; at < source.size();) {
        if (IsWhiteSpace(source[at])) {
            if (!text.empty() && !IsWhiteSpace(text.back()))
                text += L' ';
            ++at;
            continue;
        }
        const std::size_t entity = source[at] == L'&' ? AppendEntity(text, source.substr(at)) : 0;
        if (entity == 0)
            text += source[at];
        at += entity == 0 ? 1 : entity;
    }
}

bool BreaksLine(std::wstring_view tag) {
    return EqualsIgnoringCase(tag, L"br") || EqualsIgnoringCase(tag, L"p") ||
           EqualsIgnoringCase(tag, L"div");
}

}  // namespace

void BuiltInHtmlDocument::InsertAtStartOfBody(const std::wstring& existingHtml,
                                              const std::wstring& fragment) {
    const std::size_t start = StartOfBody(existingHtml);
    if (start == npos) {
        document_ =
            Join(L"<HTML><HEAD></HEAD>\r\n<BODY>", fragment, existingHtml, L"</BODY></HTML>");
    } else {
        document_ = Join(existingHtml.substr(0, start), fragment, existingHtml.substr(start));
    }
}

std::wstring BuiltInHtmlDocument::VisibleText(const std::wstring& html) {
    std::wstring text;
    bool inHead = false;
    Scanner scanner(html);
    Piece piece;
    while (scanner.Next(piece)) {
        switch (piece.kind) {
            case PieceKind::Text:
                if (!inHead) {
                    AppendVisible(
                        text, std::wstring_view(html).substr(piece.begin, piece.end - piece.begin));
                }
                break;
            case PieceKind::OpenTag:
                if (EqualsIgnoringCase(piece.name, L"head"))
                    inHead = true;
                if (EqualsIgnoringCase(piece.name, L"body"))
                    inHead = false;
                if (BreaksLine(piece.name) && !text.empty())
                    text += lineBreak;
                break;
            case PieceKind::CloseTag:
                if (EqualsIgnoringCase(piece.name, L"head"))
                    inHead = false;
                break;
            case PieceKind::Other:
                break;
        }
    }
    while (!text.empty() && IsWhiteSpace(text.back()))
        text.pop_back();
    return text;
}

}  // namespace corvane
