#pragma once

#include "platform/kit/Windows.h"

#include <msxml2.h>
#include <wrl/client.h>

namespace corvane {

// MSXML's versions: 3 is part of every Windows, 6 is preferred where it is installed.
inline constexpr CLSID xmlDocument3 = {
    0xf5078f32, 0xc551, 0x11d3, {0x89, 0xb9, 0x00, 0x00, 0xf8, 0x1f, 0xe2, 0x21}};
inline constexpr CLSID xmlDocument6 = {
    0x88d96a05, 0xf192, 0x11d4, {0xa6, 0x5f, 0x00, 0x40, 0x96, 0x32, 0x51, 0xe5}};

// The document reads the text it is given and fetches nothing, whatever the text names; version 3
// would by itself.
void FetchNothing(IXMLDOMDocument2& document);

// A document of one version that fetches nothing. Raises when this version is not installed.
[[nodiscard]] Microsoft::WRL::ComPtr<IXMLDOMDocument2> NewXmlDocument(const CLSID& version);

}  // namespace corvane
