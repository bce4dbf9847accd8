#include "envelope/Xml.h"

#include <algorithm>
#include <stdexcept>

namespace practice {
namespace {

constexpr int deepestNesting = 64;
constexpr std::wstring_view blanks = L" \t\r\n";

struct Malformed {
    std::wstring reason;
};

bool IsNameCharacter(wchar_t character) {
    return (character >= L'a' && character <= L'z') || (character >= L'A' && character <= L'Z') ||
           (character >= L'0' && character <= L'9') || character == L'_' || character == L'-' ||
           character == L'.' || character == L':' || character >= 0x80;
}

void AppendCodePoint(std::wstring& text, unsigned long code) {
    if (code == 0 || code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF))
        throw Malformed{L"a character reference to no character"};
    if (code >= 0x10000) {
        code -= 0x10000;
        text += static_cast<wchar_t>(0xD800 + (code >> 10));
        text += static_cast<wchar_t>(0xDC00 + (code & 0x3FF));
    } else {
        text += static_cast<wchar_t>(code);
    }
}

class Reader {
public:
    explicit Reader(std::wstring_view text) : text_(text) {}

    XmlElement Document() {
        if (!text_.empty() && text_.front() == 0xFEFF)
            ++position_;
        SkipProlog();
        XmlElement root = Element(0);
        SkipProlog();
        if (position_ != text_.size())
            throw Malformed{L"text behind the root element"};
        return root;
    }

private:
    [[nodiscard]] bool At(std::wstring_view expected) const {
        return text_.substr(position_, expected.size()) == expected;
    }

    wchar_t Next() {
        if (position_ >= text_.size())
            throw Malformed{L"unexpected end"};
        return text_[position_++];
    }

    void Expect(std::wstring_view expected) {
        if (!At(expected))
            throw Malformed{L"expected " + std::wstring(expected)};
        position_ += expected.size();
    }

    void SkipBlanks() {
        position_ = std::min(text_.find_first_not_of(blanks, position_), text_.size());
    }

    std::wstring_view Until(std::wstring_view end) {
        const std::size_t found = text_.find(end, position_);
        if (found == std::wstring_view::npos)
            throw Malformed{L"missing " + std::wstring(end)};
        const std::wstring_view between = text_.substr(position_, found - position_);
        position_ = found + end.size();
        return between;
    }

    void SkipProlog() {
        for (SkipBlanks();; SkipBlanks()) {
            if (At(L"<?"))
                Until(L"?>");
            else if (At(L"<!--"))
                Until(L"-->");
            else
                return;
        }
    }

    std::wstring Name() {
        const std::size_t start = position_;
        while (position_ < text_.size() && IsNameCharacter(text_[position_]))
            ++position_;
        if (start == position_)
            throw Malformed{L"a name is missing"};
        return std::wstring(text_.substr(start, position_ - start));
    }

    void Reference(std::wstring& into) {
        const std::wstring name(Until(L";"));
        if (name == L"amp") {
            into += L'&';
        } else if (name == L"lt") {
            into += L'<';
        } else if (name == L"gt") {
            into += L'>';
        } else if (name == L"quot") {
            into += L'"';
        } else if (name == L"apos") {
            into += L'\'';
        } else if (name.size() > 1 && name[0] == L'#') {
            const bool hexadecimal = name[1] == L'x';
            const std::wstring digits = name.substr(hexadecimal ? 2 : 1);
            const std::wstring_view allowed =
                hexadecimal ? L"0123456789abcdefABCDEF" : L"0123456789";
            if (digits.empty() || digits.size() > 8 ||
                digits.find_first_not_of(allowed) != std::wstring::npos) {
                throw Malformed{L"a malformed character reference"};
            }
            AppendCodePoint(into, std::stoul(digits, nullptr, hexadecimal ? 16 : 10));
        } else {
            throw Malformed{L"an unknown entity"};
        }
    }

    // One character of text or of an attribute's value.
    void Character(std::wstring& into) {
        const wchar_t character = Next();
        if (character == L'&') {
            Reference(into);
        } else if (character == L'<') {
            throw Malformed{L"a less-than sign inside a value"};
        } else if (character == L'\r') {
            if (!At(L"\n"))
                into += L'\n';
        } else if (character < L' ' && character != L'\n' && character != L'\t') {
            throw Malformed{L"a control character"};
        } else {
            into += character;
        }
    }

    void Attributes(XmlElement& element) {
        for (SkipBlanks(); !At(L">") && !At(L"/>"); SkipBlanks()) {
            std::wstring name = Name();
            SkipBlanks();
            Expect(L"=");
            SkipBlanks();
            const wchar_t quote = Next();
            if (quote != L'"' && quote != L'\'')
                throw Malformed{L"an attribute's value is not quoted"};
            std::wstring value;
            while (!At(std::wstring_view(&quote, 1)))
                Character(value);
            ++position_;
            element.attributes.emplace_back(std::move(name), std::move(value));
        }
    }

    XmlElement Element(int depth) {
        if (depth > deepestNesting)
            throw Malformed{L"elements are nested too deeply"};
        Expect(L"<");
        XmlElement element;
        element.name = Name();
        Attributes(element);
        if (At(L"/>")) {
            Expect(L"/>");
            return element;
        }
        Expect(L">");
        while (!At(L"</")) {
            if (At(L"<!--")) {
                Until(L"-->");
            } else if (At(L"<![CDATA[")) {
                Expect(L"<![CDATA[");
                element.text += Until(L"]]>");
            } else if (At(L"<?")) {
                Until(L"?>");
            } else if (At(L"<")) {
                element.children.push_back(Element(depth + 1));
            } else {
                Character(element.text);
            }
        }
        Expect(L"</");
        Expect(element.name);
        SkipBlanks();
        Expect(L">");
        return element;
    }

    std::wstring_view text_;
    std::size_t position_ = 0;
};

}  // namespace

std::wstring_view XmlElement::Attribute(std::wstring_view attributeName) const {
    for (const auto& [key, value] : attributes) {
        if (key == attributeName)
            return value;
    }
    return {};
}

XmlResult ParseXml(std::wstring_view text) {
    XmlResult result;
    try {
        result.root = Reader(text).Document();
    } catch (const Malformed& malformed) {
        result.error = malformed.reason;
    }
    return result;
}

std::wstring EscapeXml(std::wstring_view text) {
    std::wstring result;
    result.reserve(text.size());
    for (const wchar_t character : text) {
        switch (character) {
            case L'&':
                result += L"&amp;";
                break;
            case L'<':
                result += L"&lt;";
                break;
            case L'>':
                result += L"&gt;";
                break;
            case L'"':
                result += L"&quot;";
                break;
            case L'\'':
                result += L"&apos;";
                break;
            default:
                result += character;
        }
    }
    return result;
}

}  // namespace practice
