#pragma once

#include <array>
#include <string_view>

#include "platform/kit/Windows.h"

namespace corvane {

// The place of a file that the program makes where every user may make one: the file and the two
// folders around it. Somebody else may have put a link under one of these names; what stands above
// belongs to the administrator, who may have moved it. A place that the system cannot tell counts
// as the own one. Takes no memory of the heap: a crash asks it too.
class OwnPlace {
public:
    explicit OwnPlace(std::wstring_view path);

    // Before a file is made there.
    [[nodiscard]] bool HasFolder() const;
    [[nodiscard]] bool HasFile(HANDLE file) const;

private:
    // One that is too long to be kept is another place than any.
    class Path {
    public:
        Path() = default;
        explicit Path(std::wstring_view text) { Append(text); }
        void Append(std::wstring_view text);
        [[nodiscard]] std::wstring_view text() const { return {text_.data(), length_}; }
        [[nodiscard]] const wchar_t* c_str() const { return text_.data(); }

    private:
        std::array<wchar_t, 1024> text_{};
        std::size_t length_ = 0;
    };

    static Path PlaceOf(HANDLE opened);
    static Path PlaceOfFolder(std::wstring_view path);

    Path path_;
    Path place_;  // where that is in truth; empty where it cannot be told
};

}  // namespace corvane
