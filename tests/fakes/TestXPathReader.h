#pragma once

// The XPath reader for tests of the logic: the program's own on Windows, libxml2's elsewhere.
#ifdef _WIN32

#include "platform/MsxmlXPathReader.h"

namespace corvane::test {
using TestXPathReader = MsxmlXPathReader;
}

#else

#include "fakes/LibxmlXPathReader.h"

namespace corvane::test {
using TestXPathReader = LibxmlXPathReader;
}

#endif
