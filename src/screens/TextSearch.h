#pragma once

#include <QByteArray>

/// Whether the text contains the words, which are not empty. Compares many places at once, so that
/// megabytes of texts that lack the words are passed in a few milliseconds, whatever the words are.
bool containsWords(const QByteArray &text, const QByteArray &words);
