#include "records/Catalogue.h"
#include "records/JsonDecoder.h"
#include "service/MacRelease.h"

template Items<MacRelease> Json::decode<Items<MacRelease>>(QByteArray, DateForm);
