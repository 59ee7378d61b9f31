#pragma once

#include <QString>
#include <QStringList>

/// Texts of cases as sentences.
namespace Sentences {

/// The sentences of a text in its order, each as it stands there.
QStringList of(const QString &text);

/// Whether the sentence can be read without the one before it: it does not begin by pointing back.
bool standsAlone(const QString &sentence);

} // namespace Sentences
