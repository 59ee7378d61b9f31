#include "records/JsonDecoder.h"
#include "service/WallReplies.h"

template WallCaseReply Json::decode<WallCaseReply>(QByteArray, DateForm);
template WallRemovalReply Json::decode<WallRemovalReply>(QByteArray, DateForm);
template WallChatReply Json::decode<WallChatReply>(QByteArray, DateForm);
