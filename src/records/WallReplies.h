#pragma once

#include "records/Wall.h"

/// The answer to a case that was put on the wall or taken off.
struct WallCaseReply {
    /// Whether the wall holds the case now.
    bool on = false;
};

struct WallRemovalReply {
    std::optional<bool> ok;
};

struct WallChatReply {
    bool ok = false;
    /// The pinned chat under the id that the wall knows it by.
    WallItem item;
};

template <>
struct JsonFields<WallCaseReply> {
    static constexpr auto table = std::make_tuple(jsonField("on", &WallCaseReply::on));
};

template <>
struct JsonFields<WallRemovalReply> {
    static constexpr auto table = std::make_tuple(jsonField("ok", &WallRemovalReply::ok));
};

template <>
struct JsonFields<WallChatReply> {
    static constexpr auto table = std::make_tuple(jsonField("ok", &WallChatReply::ok),
                                                  jsonField("item", &WallChatReply::item));
};
