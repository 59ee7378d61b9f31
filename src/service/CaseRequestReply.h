#pragma once

#include "records/JsonFields.h"

#include <optional>

/// What the service says to a request for more cases.
struct CaseRequestReply {
    bool queued = false;
    /// It had the same request before.
    std::optional<bool> duplicate;
};

template <>
struct JsonFields<CaseRequestReply> {
    static constexpr auto table =
        std::make_tuple(jsonField("queued", &CaseRequestReply::queued),
                        jsonField("duplicate", &CaseRequestReply::duplicate));
};
