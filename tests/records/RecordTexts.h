#pragma once

#include "records/Json.h"

#include <QByteArray>

#include <ostream>
#include <string>
#include <vector>

/// A record's full JSON text, and the codec for it with the type taken away.
struct RecordText {
    const char *name;
    /// Every key that the service's contract knows, in the contract's order. A key that may be
    /// absent or null ends in "?"; a key of a map, which may be absent and not null, ends in "*".
    std::string annotated;
    QByteArray (*recode)(const QByteArray &text, DateForm dates);

    /// The JSON text itself.
    QByteArray text() const;
};

std::ostream &operator<<(std::ostream &stream, const RecordText &record);

const std::vector<RecordText> &recordTexts();

/// The record of that name.
const RecordText &recordText(std::string_view name);
