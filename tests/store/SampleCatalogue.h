#pragma once

#include "records/Catalogue.h"

/// What a service would tell about itself, as records and as the bodies of its replies.
namespace SampleCatalogue {

Health health(qint64 total = 2400);
QByteArray healthBody(qint64 total = 2400);

Archive archive(const QString &id, qint64 count = 10);
QByteArray archivesBody(const QList<Archive> &archives);

/// Three archives, the flagship in the middle.
QList<Archive> archives();
QByteArray archivesBody();

} // namespace SampleCatalogue
