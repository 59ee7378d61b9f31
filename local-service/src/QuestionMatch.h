#pragma once

#include "CaseIndex.h"
#include "QuestionWords.h"

#include <QString>
#include <QStringList>

/// A question held against the collection: how far a text speaks of what is asked. The index must
/// outlive it.
class QuestionMatch final {
public:
    enum class Words {
        All,
        /// Of a question in another language only names can be found, and a word that happens to
        /// be spelled like an English one must not be.
        NamesOnly,
    };

    QuestionMatch(const CaseIndex &index, const QString &question, Words words);

    const CaseIndex &index() const { return m_index; }

    /// Whether the question has no word that a case could be found by.
    bool isEmpty() const { return m_terms.isEmpty(); }

    /// The share of the question that the roots cover, from 0 to 1. Rare words count for more, and
    /// a word of the same kin for less than the word itself.
    double share(const QList<RootNumber> &roots) const;

    /// How well the whole case fits, from 0 to 1.
    double score(const IndexedCase &item) const;
    /// The share that the case covers anywhere.
    double coverage(const IndexedCase &item) const;
    /// Whether the question is so short that half of it says little.
    bool isShort() const { return m_terms.size() <= 2; }

    /// The subject of the case that covers most of the question; none when no subject covers any.
    const IndexedCase::Subject *bestSubject(const IndexedCase &item) const;
    /// The share that the best subject of the section covers.
    double subjectShare(const IndexedCase &item, qsizetype section) const;

    /// The asker's words that stand in the case itself, the rarest first.
    QStringList wordsFoundIn(const IndexedCase &item) const;

private:
    struct Term {
        QString written;
        double rarity = 0;
        std::optional<RootNumber> root;
        QList<RootNumber> kin;
    };

    static bool hasKin(const Term &term, const QList<RootNumber> &roots);
    double sentenceShare(const QList<RootNumber> &roots) const;

    const CaseIndex &m_index;
    QList<Term> m_terms;
    double m_total = 0;
};
