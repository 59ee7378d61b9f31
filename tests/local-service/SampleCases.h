#pragma once

#include <QByteArray>
#include <QList>

/// A collection small enough to know every answer by heart: four cases of "foible" and three of
/// "lumen". Each of the words that the tests search stands where its name says.
QList<QByteArray> sampleCases();

/// The same with one case more, "lumen:late".
QList<QByteArray> largerSampleCases();
