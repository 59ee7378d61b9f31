#include "records/JsonDecoder.h"
#include "service/ServiceError.h"

template ServiceError Json::decode<ServiceError>(QByteArray, DateForm);
