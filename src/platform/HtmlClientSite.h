#pragma once

#include <memory>

#include "platform/kit/Windows.h"

#include <oleidl.h>

namespace corvane {

struct TakeSiteBack {
    void operator()(IOleObject* document) const;
};

// A document of the HTML engine while it has a client site; the site is taken back when this goes.
using SitedDocument = std::unique_ptr<IOleObject, TakeSiteBack>;

// Gives the document a client site that forbids it to run or to load anything. Nothing where the
// document does not take it: such a document must be given nothing of strangers to read.
[[nodiscard]] SitedDocument ForbidActiveContent(IUnknown& document);

}  // namespace corvane
