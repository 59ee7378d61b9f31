#pragma once

#include "records/JsonFields.h"

#include <QString>

#include <exception>
#include <optional>

/// A failure that the service reports, or that stands for a failed reply without a usable body.
class ServiceError final : public std::exception {
public:
    /// Machine code in snake case, such as "signin_required".
    QString error;
    /// For the user, already in words.
    std::optional<QString> message;
    /// The HTTP status; filled in by API::call, never read from JSON.
    std::optional<int> status;

    /// What a generic error display shows: the message, or the code with blanks for underscores.
    QString errorDescription() const;

    const char *what() const noexcept override { return "ServiceError"; }
};

template <>
struct JsonFields<ServiceError> {
    static constexpr auto table = std::make_tuple(jsonField("error", &ServiceError::error),
                                                  jsonField("message", &ServiceError::message));
};
