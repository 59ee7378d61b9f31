#include "Retrieval.h"

#include "SearchText.h"

#include <QSet>

#include <algorithm>
#include <vector>

namespace {

using Retrieval::Finding;

/// From here on a case answers the question, and below it is only somewhere near.
constexpr double strongScore = 0.27;
constexpr double weakestScore = 0.22;
/// The share of the question that a case must have at all, and the share of a short one that it
/// must have to answer it.
constexpr double leastCoverage = 0.42;
constexpr double leastCoverageOfShort = 0.6;
/// How far behind the best one a case may stay that does not fit well by itself.
constexpr double worstShareOfBest = 0.45;
constexpr double goodScore = 0.3;
constexpr qsizetype greatestWeakCount = 2;
/// The share of its weight that each earlier question keeps.
constexpr double fading = 0.25;
constexpr double evidenceAdvantage = 1.2;

QuestionMatch::Words wordsOf(const Inquiry &inquiry) {
    return inquiry.language == AppLanguage::en || QuestionWords::looksEnglish(inquiry.question)
               ? QuestionMatch::Words::All
               : QuestionMatch::Words::NamesOnly;
}

bool pointsBack(const QString &question) {
    static const QSet<QString> pointers = {
        QStringLiteral("he"),    QStringLiteral("she"),   QStringLiteral("it"),
        QStringLiteral("they"),  QStringLiteral("him"),   QStringLiteral("her"),
        QStringLiteral("them"),  QStringLiteral("his"),   QStringLiteral("its"),
        QStringLiteral("their"), QStringLiteral("this"),  QStringLiteral("that"),
        QStringLiteral("these"), QStringLiteral("those"), QStringLiteral("there"),
        QStringLiteral("case"),  QStringLiteral("cases"), QStringLiteral("then")};
    static const QSet<QString> connectives = {QStringLiteral("and"), QStringLiteral("but"),
                                              QStringLiteral("so")};
    const auto words = SearchText::words(question);
    return connectives.contains(words.value(0)) ||
           std::any_of(words.begin(), words.end(),
                       [](const QString &word) { return pointers.contains(word); });
}

QList<Finding> evidenceOf(const CaseIndex &index, const Inquiry &inquiry,
                          const QuestionMatch &match) {
    QList<Finding> findings;
    for (const auto &name : inquiry.evidence) {
        const auto *item = index.find(name.archive, name.id);
        const bool isNew =
            std::none_of(findings.begin(), findings.end(),
                         [&](const Finding &finding) { return finding.item == item; });
        if (item && isNew)
            findings.append({item, match.score(*item), true});
    }
    return findings;
}

/// The whole collection within the archives, best first.
QList<Finding> ranked(const CaseIndex &index, const Inquiry &inquiry, const QuestionMatch &match,
                      const QList<Finding> &evidence) {
    std::vector<std::pair<QuestionMatch, double>> earlier;
    double weight = fading;
    for (const QString &question : inquiry.earlier) {
        earlier.emplace_back(QuestionMatch(index, question, wordsOf(inquiry)), weight);
        weight *= fading;
    }
    QList<Finding> findings;
    for (const auto &item : index.cases()) {
        if (!inquiry.archives.isEmpty() && !inquiry.archives.contains(item.archive))
            continue;
        double score = match.score(item);
        if (score > 0) {
            double context = 0;
            for (const auto &[before, share] : earlier)
                context += share * before.score(item);
            // The talk so far tells between cases that fit, and never makes one fit.
            score += std::min(score, context);
        }
        const bool isEvidence =
            std::any_of(evidence.begin(), evidence.end(),
                        [&](const Finding &finding) { return finding.item == &item; });
        if (isEvidence)
            score *= evidenceAdvantage;
        const double coverage = match.coverage(item);
        if (coverage >= leastCoverage)
            findings.append(
                {&item, score,
                 score >= strongScore && (!match.isShort() || coverage >= leastCoverageOfShort)});
    }
    std::stable_sort(findings.begin(), findings.end(),
                     [](const Finding &a, const Finding &b) { return a.score > b.score; });
    return findings;
}

/// Those that are worth showing.
QList<Finding> selected(const QList<Finding> &ranked) {
    QList<Finding> findings;
    for (const Finding &finding : ranked) {
        const bool wanted =
            finding.score >= weakestScore &&
            finding.score >= std::min(goodScore, worstShareOfBest * ranked.first().score);
        const auto limit = finding.strong ? Retrieval::greatestCount : greatestWeakCount;
        if (wanted && findings.size() < limit)
            findings.append(finding);
    }
    return findings;
}

} // namespace

Retrieval::Result Retrieval::find(const CaseIndex &index, const Inquiry &inquiry) {
    const QuestionMatch match(index, inquiry.question, wordsOf(inquiry));
    const auto evidence = evidenceOf(index, inquiry, match);
    const auto all = ranked(index, inquiry, match, evidence);
    const double best = all.isEmpty() ? 0 : all.first().score;

    const bool evidenceSpeaks = std::any_of(
        evidence.begin(), evidence.end(), [](const Finding &finding) { return finding.score > 0; });
    const bool leansOnEvidence =
        match.isEmpty() || best < weakestScore || (evidenceSpeaks && pointsBack(inquiry.question));
    if (!evidence.isEmpty() &&
        (inquiry.kind != Inquiry::Kind::Question || inquiry.aboutEvidence || leansOnEvidence))
        return {evidence.first(std::min(evidence.size(), greatestCount)), match, true};
    return {selected(all), match, false};
}
