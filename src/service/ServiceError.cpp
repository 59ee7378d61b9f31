#include "service/ServiceError.h"

QString ServiceError::errorDescription() const {
    if (message)
        return *message;
    return QString(error).replace(QLatin1Char('_'), QLatin1Char(' '));
}
