#pragma once

#include <QString>

#include <exception>
#include <string>

/// A reply or a file that is not the JSON that a record asks for.
class DecodingError final : public std::exception {
public:
    /// `detail` tells a developer where the decoding stopped ("CaseCard.locale is missing"). It
    /// never holds any of the text that was decoded.
    explicit DecodingError(std::string detail);

    const char *what() const noexcept override;

    /// A sentence for people. The copy key "decodingError" holds its translations.
    QString localizedDescription() const;

private:
    std::string m_detail;
};
