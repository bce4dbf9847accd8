#pragma once

#include <windows.h>

namespace test_support {

// While it lives, this program calls another function in place of one that it imports from a DLL.
class ReplacedImport {
public:
    template <class Function>
    ReplacedImport(const char* name, Function replacement)
        : ReplacedImport(name, reinterpret_cast<ULONG_PTR>(replacement)) {}
    ~ReplacedImport();
    ReplacedImport(const ReplacedImport&) = delete;
    ReplacedImport& operator=(const ReplacedImport&) = delete;

private:
    ReplacedImport(const char* name, ULONG_PTR replacement);

    ULONG_PTR* place_;
    ULONG_PTR former_ = 0;
};

}  // namespace test_support
