// The codec for the catalogue's records, instantiated once.
#include "records/Catalogue.h"
#include "records/JsonDecoder.h"
#include "records/JsonEncoder.h"

template Archive Json::decode<Archive>(QByteArray, DateForm);
template CaseCard Json::decode<CaseCard>(QByteArray, DateForm);
template CaseEntry Json::decode<CaseEntry>(QByteArray, DateForm);
template SearchPage Json::decode<SearchPage>(QByteArray, DateForm);
template Items<Archive> Json::decode<Items<Archive>>(QByteArray, DateForm);
template Items<QString> Json::decode<Items<QString>>(QByteArray, DateForm);
template Health Json::decode<Health>(QByteArray, DateForm);
template Facets Json::decode<Facets>(QByteArray, DateForm);

template QByteArray Json::encode<Archive>(const Archive &, DateForm);
template QByteArray Json::encode<CaseCard>(const CaseCard &, DateForm);
template QByteArray Json::encode<CaseEntry>(const CaseEntry &, DateForm);
template QByteArray Json::encode<SearchPage>(const SearchPage &, DateForm);
template QByteArray Json::encode<Items<Archive>>(const Items<Archive> &, DateForm);
template QByteArray Json::encode<Items<QString>>(const Items<QString> &, DateForm);
template QByteArray Json::encode<Health>(const Health &, DateForm);
template QByteArray Json::encode<Facets>(const Facets &, DateForm);
