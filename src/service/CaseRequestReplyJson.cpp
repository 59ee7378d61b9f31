#include "records/JsonDecoder.h"
#include "service/CaseRequestReply.h"

template CaseRequestReply Json::decode<CaseRequestReply>(QByteArray, DateForm);
