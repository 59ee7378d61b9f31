#include "QuestionMatch.h"

#include <algorithm>

namespace {

constexpr double kinShare = 0.6;
/// The weight at which a root counts for half of what it could.
constexpr double halfWeight = 3.0;
/// A sentence that happens to hold the words says less than a subject that someone chose, and one
/// with a single everyday word says next to nothing.
constexpr double sentenceWeight = 0.8;
constexpr double loneWordWeight = 0.25;

bool contains(const QList<RootNumber> &sorted, RootNumber root) {
    return std::binary_search(sorted.begin(), sorted.end(), root);
}

double saturated(double weight) {
    return weight / (weight + halfWeight);
}

} // namespace

QuestionMatch::QuestionMatch(const CaseIndex &index, const QString &question, Words words)
    : m_index(index) {
    const auto terms = QuestionWords::terms(question);
    for (const auto &term : terms) {
        const auto root = index.number(term.root);
        if (words == Words::NamesOnly && !(root && index.isName(*root)))
            continue;
        Term known{term.written, index.rarity(root), root, {}};
        if (words == Words::All) {
            for (const QString &kin : term.kin) {
                if (const auto number = index.number(kin))
                    known.kin.append(*number);
            }
        }
        m_total += known.rarity;
        m_terms.append(known);
    }
}

bool QuestionMatch::hasKin(const Term &term, const QList<RootNumber> &roots) {
    return std::any_of(term.kin.begin(), term.kin.end(),
                       [&](RootNumber kin) { return contains(roots, kin); });
}

double QuestionMatch::share(const QList<RootNumber> &roots) const {
    if (isEmpty())
        return 0;
    double covered = 0;
    for (const Term &term : m_terms) {
        if (term.root && contains(roots, *term.root))
            covered += term.rarity;
        else if (hasKin(term, roots))
            covered += kinShare * term.rarity;
    }
    return covered / m_total;
}

double QuestionMatch::sentenceShare(const QList<RootNumber> &roots) const {
    int found = 0;
    bool isNamed = false;
    for (const Term &term : m_terms) {
        const bool stands = term.root && contains(roots, *term.root);
        if (stands || hasKin(term, roots))
            ++found;
        isNamed = isNamed || (stands && m_index.isName(*term.root));
    }
    return share(roots) * (found > 1 || isNamed ? sentenceWeight : loneWordWeight);
}

double QuestionMatch::coverage(const IndexedCase &item) const {
    double covered = 0;
    for (const Term &term : m_terms) {
        if (term.root && item.weights.contains(*term.root))
            covered += term.rarity;
        else if (std::any_of(term.kin.begin(), term.kin.end(),
                             [&](RootNumber kin) { return item.weights.contains(kin); }))
            covered += kinShare * term.rarity;
    }
    return isEmpty() ? 0 : covered / m_total;
}

double QuestionMatch::score(const IndexedCase &item) const {
    if (isEmpty())
        return 0;
    double presence = 0;
    for (const Term &term : m_terms) {
        const double own = term.root ? term.rarity * saturated(item.weights.value(*term.root)) : 0;
        double byKin = 0;
        for (const RootNumber kin : term.kin)
            byKin = std::max(byKin, kinShare * std::min(term.rarity, m_index.rarity(kin)) *
                                        saturated(item.weights.value(kin)));
        presence += std::max(own, byKin);
    }
    double best = share(item.titleRoots);
    for (const auto &subject : item.subjects)
        best = std::max(best, share(subject.roots));
    for (const auto &sentence : item.sentences)
        best = std::max(best, sentenceShare(sentence.roots));
    return (presence / m_total + best) / 2 * (0.6 + 0.4 * coverage(item));
}

const IndexedCase::Subject *QuestionMatch::bestSubject(const IndexedCase &item) const {
    const IndexedCase::Subject *best = nullptr;
    double most = 0;
    for (const auto &subject : item.subjects) {
        const double covered = share(subject.roots);
        if (covered > most) {
            most = covered;
            best = &subject;
        }
    }
    return best;
}

double QuestionMatch::subjectShare(const IndexedCase &item, qsizetype section) const {
    double most = 0;
    for (const auto &subject : item.subjects) {
        if (subject.section == section)
            most = std::max(most, share(subject.roots));
    }
    return most;
}

QStringList QuestionMatch::wordsFoundIn(const IndexedCase &item) const {
    QList<Term> found;
    std::copy_if(m_terms.begin(), m_terms.end(), std::back_inserter(found),
                 [&](const Term &term) { return term.root && item.weights.contains(*term.root); });
    std::stable_sort(found.begin(), found.end(), [](const Term &left, const Term &right) {
        return left.rarity > right.rarity;
    });
    QStringList words;
    for (const Term &term : std::as_const(found))
        words.append(term.written);
    return words;
}
