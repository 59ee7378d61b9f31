#pragma once

#include "CaseData.h"

#include <QHash>
#include <QList>
#include <QString>

#include <optional>
#include <vector>

/// A root (see WordRoot) as a number of one index.
using RootNumber = std::size_t;

/// A case taken apart for answering questions.
struct IndexedCase {
    static constexpr qsizetype summary = -1;

    struct Sentence {
        QString text;
        /// The position of its section, or `summary`.
        qsizetype section = summary;
        /// In rising order.
        QList<RootNumber> roots;
        int wordCount = 0;
        /// See Sentences::standsAlone.
        bool standsAlone = true;
        /// Whether it names a person by the surname whom another sentence introduces.
        bool namesStranger = false;
    };

    /// An entry of the case's index of subjects.
    struct Subject {
        QString text;
        qsizetype section = 0;
        QList<RootNumber> roots;
    };

    QString archive;
    CaseData::WrittenCase written;
    QList<RootNumber> titleRoots;
    /// Summary first, then the sections in their order.
    QList<Sentence> sentences;
    QList<Subject> subjects;
    /// How much each root weighs in the case: what stands in the title or among the subjects weighs
    /// more than what stands in the text.
    QHash<RootNumber, double> weights;

    /// The section that draws the lesson: always the last one.
    qsizetype lessonSection() const { return written.sections.size() - 1; }
    CaseCard card() const;
};

/// The collection as it is searched for answers. Read by all threads once it is made.
class CaseIndex final {
public:
    explicit CaseIndex(const QList<CaseData::File> &files);

    const std::vector<IndexedCase> &cases() const { return m_cases; }
    const IndexedCase *find(const QString &archive, const QString &id) const;

    /// Absent for a root that no case has.
    std::optional<RootNumber> number(const QString &root) const;
    /// What a root tells about the cases that have it: nearly 0 when all have it, `greatestRarity`
    /// when few or none have it.
    double rarity(std::optional<RootNumber> root) const;
    /// Whether the root is written with a capital or a digit wherever it occurs.
    bool isName(RootNumber root) const { return m_names[root]; }

    static constexpr double greatestRarity = 3.0;

private:
    RootNumber add(const QString &root);
    QList<RootNumber> addAll(const QString &text);
    void noteNames(const QString &text);
    void weigh(IndexedCase &item, const QString &text, double weight);
    void addSentences(IndexedCase &item, const QString &text, qsizetype section);
    IndexedCase index(const QString &archive, const CaseData::WrittenCase &written);

    std::vector<IndexedCase> m_cases;
    QHash<QString, RootNumber> m_numbers;
    std::vector<bool> m_names;
    /// In how many cases each root occurs.
    std::vector<int> m_occurrences;
};
