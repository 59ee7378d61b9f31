#include "records/DecodingError.h"

DecodingError::DecodingError(std::string detail) : m_detail(std::move(detail)) {}

const char *DecodingError::what() const noexcept {
    return m_detail.c_str();
}

QString DecodingError::localizedDescription() const {
    return QStringLiteral("The service answered in a form that this version does not understand.");
}
