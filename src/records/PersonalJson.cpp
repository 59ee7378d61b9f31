// The codec for the records of accounts, chats, walls and libraries, instantiated once.
#include "records/Account.h"
#include "records/JsonDecoder.h"
#include "records/JsonEncoder.h"
#include "records/Library.h"
#include "records/WallReplies.h"

template Account Json::decode<Account>(QByteArray, DateForm);
template Login Json::decode<Login>(QByteArray, DateForm);
template Quota Json::decode<Quota>(QByteArray, DateForm);
template Acknowledgement Json::decode<Acknowledgement>(QByteArray, DateForm);
template VerificationReply Json::decode<VerificationReply>(QByteArray, DateForm);
template WebSession Json::decode<WebSession>(QByteArray, DateForm);
template ChatEvent Json::decode<ChatEvent>(QByteArray, DateForm);
template Conversation Json::decode<Conversation>(QByteArray, DateForm);
template SavedChat Json::decode<SavedChat>(QByteArray, DateForm);
template WallItem Json::decode<WallItem>(QByteArray, DateForm);
template Items<WallItem> Json::decode<Items<WallItem>>(QByteArray, DateForm);
template WallCaseReply Json::decode<WallCaseReply>(QByteArray, DateForm);
template WallRemovalReply Json::decode<WallRemovalReply>(QByteArray, DateForm);
template WallChatReply Json::decode<WallChatReply>(QByteArray, DateForm);
template LibraryUpload Json::decode<LibraryUpload>(QByteArray, DateForm);
template LibraryReply Json::decode<LibraryReply>(QByteArray, DateForm);
template LocalLibrary Json::decode<LocalLibrary>(QByteArray, DateForm);

template QByteArray Json::encode<Account>(const Account &, DateForm);
template QByteArray Json::encode<Login>(const Login &, DateForm);
template QByteArray Json::encode<Quota>(const Quota &, DateForm);
template QByteArray Json::encode<ChatEvent>(const ChatEvent &, DateForm);
template QByteArray Json::encode<Conversation>(const Conversation &, DateForm);
template QByteArray Json::encode<SavedChat>(const SavedChat &, DateForm);
template QByteArray Json::encode<WallItem>(const WallItem &, DateForm);
template QByteArray Json::encode<Items<WallItem>>(const Items<WallItem> &, DateForm);
template QByteArray Json::encode<WallCaseReply>(const WallCaseReply &, DateForm);
template QByteArray Json::encode<WallRemovalReply>(const WallRemovalReply &, DateForm);
template QByteArray Json::encode<WallChatReply>(const WallChatReply &, DateForm);
template QByteArray Json::encode<LibraryUpload>(const LibraryUpload &, DateForm);
template QByteArray Json::encode<LibraryReply>(const LibraryReply &, DateForm);
template QByteArray Json::encode<LocalLibrary>(const LocalLibrary &, DateForm);
