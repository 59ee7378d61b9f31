#include "SentenceChoice.h"

#include "SearchText.h"

#include <algorithm>

namespace {

using Kind = Inquiry::Kind;

constexpr int longSentence = 38;
constexpr int shortSentence = 7;

/// The section that tells why things went as they did, in each archive's own order of sections.
qsizetype causesSection(const IndexedCase &item) {
    const QStringList titles = {QStringLiteral("Why it happened"),
                                QStringLiteral("The decisive detail"),
                                QStringLiteral("The observation"), QStringLiteral("The turn"),
                                QStringLiteral("The first bet")};
    const auto &sections = item.written.sections;
    for (qsizetype position = 0; position < sections.size(); ++position) {
        if (titles.contains(sections[position].title))
            return position;
    }
    return 0;
}

/// What the form of the question asks for beside its words.
struct Form {
    bool asksWhy = false;
    bool asksHowLong = false;
};

Form formOf(const QString &question) {
    const auto words = SearchText::words(question);
    const bool begins = words.size() > 1;
    return {begins && words[0] == QLatin1String("why"),
            begins && words[0] == QLatin1String("how") && words[1] == QLatin1String("long")};
}

bool hasDigit(const QString &text) {
    return std::any_of(text.begin(), text.end(), [](QChar letter) { return letter.isDigit(); });
}

class Ranking final {
public:
    Ranking(const IndexedCase &item, const Inquiry &inquiry, const QuestionMatch &match)
        : m_item(item),
          m_match(match),
          m_form(formOf(inquiry.question)),
          m_causes(causesSection(item)) {
        for (qsizetype section = 0; section < item.written.sections.size(); ++section) {
            const double bySubject = match.subjectShare(item, section);
            // Of a case that is at hand one may ask for a section by its title.
            const double byTitle =
                inquiry.evidence.isEmpty() ? 0 : titleShare(item.written.sections[section].title);
            m_sectionShares.append(std::max(bySubject, byTitle));
        }
    }

    /// The sentences of the lesson or of all that stands before it, the most fitting first.
    QList<qsizetype> sentences(bool ofLesson) const {
        QList<qsizetype> positions;
        for (qsizetype position = 0; position < m_item.sentences.size(); ++position) {
            if ((m_item.sentences[position].section == m_item.lessonSection()) == ofLesson)
                positions.append(position);
        }
        std::stable_sort(positions.begin(), positions.end(),
                         [&](qsizetype a, qsizetype b) { return score(a) > score(b); });
        return positions;
    }

private:
    double titleShare(const QString &title) const {
        const auto words = QuestionWords::roots(title);
        QList<RootNumber> roots;
        for (const QString &word : words) {
            if (const auto root = m_match.index().number(word))
                roots.append(*root);
        }
        std::sort(roots.begin(), roots.end());
        return m_match.share(roots);
    }

    bool opensSection(qsizetype position) const {
        return position == 0 ||
               m_item.sentences[position - 1].section != m_item.sentences[position].section;
    }

    double score(qsizetype position) const {
        const auto &sentence = m_item.sentences[position];
        double score = m_match.share(sentence.roots);
        if (sentence.section != IndexedCase::summary)
            score += 0.5 * m_sectionShares[sentence.section];
        if (opensSection(position))
            score += sentence.section == m_item.lessonSection() ? 0.25 : 0.06;
        if (m_form.asksWhy && sentence.section == m_causes)
            score += 0.1;
        if (m_form.asksHowLong && hasDigit(sentence.text))
            score += 0.12;
        if (!sentence.standsAlone)
            score -= 0.3;
        if (sentence.namesStranger)
            score -= 0.15;
        if (sentence.wordCount > longSentence || sentence.wordCount < shortSentence)
            score -= 0.25;
        return score;
    }

    const IndexedCase &m_item;
    const QuestionMatch &m_match;
    Form m_form;
    qsizetype m_causes;
    QList<double> m_sectionShares;
};

QList<qsizetype> section(const IndexedCase &item, qsizetype wanted) {
    QList<qsizetype> positions;
    for (qsizetype position = 0; position < item.sentences.size(); ++position) {
        if (item.sentences[position].section == wanted)
            positions.append(position);
    }
    return positions;
}

/// The sentences at this place in each of the sections before the lesson.
QList<qsizetype> acrossSections(const IndexedCase &item, qsizetype place) {
    QList<qsizetype> positions;
    for (qsizetype number = 0; number < item.lessonSection(); ++number) {
        if (const auto inSection = section(item, number); place < inSection.size())
            positions.append(inSection[place]);
    }
    return positions;
}

/// The fact that bears on the question, the lesson, and what makes both understood.
QList<qsizetype> forQuestion(const IndexedCase &item, const Inquiry &inquiry,
                             const QuestionMatch &match) {
    const Ranking ranking(item, inquiry, match);
    auto facts = ranking.sentences(false);
    auto lessons = ranking.sentences(true);
    QList<qsizetype> wanted;
    if (!facts.isEmpty())
        wanted.append(facts.takeFirst());
    if (!lessons.isEmpty())
        wanted.append(lessons.takeFirst());
    wanted.append(0);
    return wanted + facts;
}

} // namespace

QList<qsizetype> SentenceChoice::wanted(const IndexedCase &item, const Inquiry &inquiry,
                                        const QuestionMatch &match) {
    const auto lesson = section(item, item.lessonSection());
    const auto summary = section(item, IndexedCase::summary);
    switch (inquiry.kind) {
    case Kind::Reasons:
        return section(item, causesSection(item)) + summary;
    case Kind::Lessons:
        return lesson + summary;
    case Kind::Summary:
        return summary + lesson.first(std::min<qsizetype>(1, lesson.size())) +
               acrossSections(item, 0);
    case Kind::Explain:
        return summary + lesson.first(std::min<qsizetype>(1, lesson.size())) +
               acrossSections(item, 0) + acrossSections(item, 1) + acrossSections(item, 2);
    case Kind::Question:
        break;
    }
    return forQuestion(item, inquiry, match);
}
