#include "CaseData.h"

#include "records/ArchiveStyle.h"
#include "records/JsonDecoder.h"

#include <QFile>

#include <stdexcept>

QList<QByteArray> CaseData::embedded() {
    QList<QByteArray> texts;
    for (const QString &archive : ArchiveStyle::ids()) {
        QFile file(QStringLiteral(":/cases/%1.json").arg(archive));
        if (!file.open(QIODevice::ReadOnly))
            throw std::runtime_error("The cases of an archive are missing from the program.");
        texts.append(file.readAll());
    }
    return texts;
}

CaseData::File CaseData::decode(const QByteArray &text) {
    return Json::decode<File>(text);
}
