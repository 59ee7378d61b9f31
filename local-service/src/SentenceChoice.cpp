#include "SentenceChoice.h"

#include "SearchText.h"

#include <algorithm>

namespace {

using Kind = Inquiry::Kind;
using SentenceChoice::Wishes;

constexpr int longSentence = 38;
constexpr int shortSentence = 7;
/// What is shorter leans on the sentence next to it.
constexpr int leaningSentence = 10;
/// So many sentences of one section are read in one go.
constexpr qsizetype longestRun = 4;
/// From this share on, the subject tells where to look, also if somebody asks why.
constexpr double tellingSubject = 0.6;

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
            m_bySubject.append(match.subjectShare(item, section));
            // Of a case that is at hand one may ask for a section by its title.
            m_byTitle.append(
                inquiry.evidence.isEmpty() ? 0 : titleShare(item.written.sections[section].title));
        }
        if (const auto *subject = match.bestSubject(item)) {
            m_subject.emplace(match.index(), subject->text, QuestionMatch::Words::All);
            m_subjectSection = subject->section;
            m_subjectShare = match.share(subject->roots);
        }
    }

    /// The sentences of the lesson or of all that stands before it, the most fitting first, but for
    /// the very first one.
    QList<qsizetype> sentences(bool ofLesson) const {
        QList<qsizetype> positions;
        for (qsizetype position = 1; position < m_item.sentences.size(); ++position) {
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

    /// How far the sentence speaks of what is asked, in the asker's words or in those of the
    /// subject under which the case was found.
    double fit(const IndexedCase::Sentence &sentence) const {
        const double own = m_match.share(sentence.roots);
        const bool bySubject = m_subject && sentence.section == m_subjectSection;
        return bySubject ? own + 0.4 * m_subject->share(sentence.roots) : own;
    }

    double lessonScore(qsizetype position, double fit) const {
        // A lesson begins with what it comes to, unless the question has led to the lesson itself.
        const bool isAsked = m_subject && m_subjectSection == m_item.lessonSection();
        return opensSection(position) ? fit + (isAsked ? 0.2 : 0.45) : fit;
    }

    /// A word alone may be there by chance, and a subject alone does not tell which sentence of its
    /// section is meant: each counts for more where the other is.
    double factScore(qsizetype position, double fit) const {
        const auto section = m_item.sentences[position].section;
        if (section == IndexedCase::summary)
            return fit + 0.5;
        const double subject = m_bySubject[section];
        const double alone = m_subjectShare > tellingSubject ? 0.3 : 0.6;
        double score = fit * (alone + (1 - alone) * std::min(1.0, 2 * subject)) +
                       std::min(0.8 * subject, 0.35 + fit) + 0.8 * m_byTitle[section];
        if (opensSection(position))
            score += 0.12;
        if (m_form.asksWhy && section == m_causes && m_subjectShare <= tellingSubject)
            score += 0.3;
        if (m_form.asksHowLong && hasDigit(m_item.sentences[position].text))
            score += 0.12;
        return score;
    }

    double score(qsizetype position) const {
        const auto &sentence = m_item.sentences[position];
        const double fitting = fit(sentence);
        double score = sentence.section == m_item.lessonSection() ? lessonScore(position, fitting)
                                                                  : factScore(position, fitting);
        if (!sentence.standsAlone && sentence.section != IndexedCase::summary)
            score -= 0.3;
        if (sentence.namesStranger)
            score -= 0.1;
        if (sentence.wordCount > longSentence ||
            (sentence.wordCount < shortSentence && !opensSection(position)))
            score -= 0.25;
        return score;
    }

    const IndexedCase &m_item;
    const QuestionMatch &m_match;
    Form m_form;
    qsizetype m_causes;
    /// How far the subjects and the title of each section are what is asked for.
    QList<double> m_bySubject;
    QList<double> m_byTitle;
    /// The subject under which the case was found says in other words what is asked.
    std::optional<QuestionMatch> m_subject;
    qsizetype m_subjectSection = 0;
    double m_subjectShare = 0;
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

/// The sentence and those that follow it in its section, since they were written to be read one
/// after the other.
QList<qsizetype> runFrom(const IndexedCase &item, qsizetype begin) {
    QList<qsizetype> positions;
    for (qsizetype position = begin;
         position < item.sentences.size() &&
         item.sentences[position].section == item.sentences[begin].section;
         ++position)
        positions.append(position);
    return positions;
}

/// The sentence with what it leans on: the short one before it or, if it is short itself, the one
/// behind it.
QList<qsizetype> withNeighbors(const IndexedCase &item, qsizetype position) {
    const auto &sentences = item.sentences;
    const auto isNear = [&](qsizetype other) {
        return other > 0 && other < sentences.size() &&
               sentences[other].section == sentences[position].section;
    };
    QList<qsizetype> positions = {position};
    if (isNear(position - 1) && sentences[position - 1].wordCount < leaningSentence &&
        sentences[position - 1].standsAlone)
        positions.prepend(position - 1);
    if (isNear(position + 1) && sentences[position].wordCount < leaningSentence)
        positions.append(position + 1);
    return positions;
}

/// What bears on the question, the lesson, and the beginning of the summary, which says what it is
/// all about.
Wishes forQuestion(const IndexedCase &item, const Inquiry &inquiry, const QuestionMatch &match) {
    const Ranking ranking(item, inquiry, match);
    QList<qsizetype> facts;
    const auto ranked = ranking.sentences(false);
    for (const qsizetype position : ranked) {
        if (facts.contains(position))
            continue;
        const auto run = runFrom(item, position);
        facts += run.first(std::min(run.size(), longestRun));
    }
    auto core = facts.isEmpty() ? facts : withNeighbors(item, facts.first());
    const auto lessons = ranking.sentences(true);
    core += lessons.first(std::min<qsizetype>(1, lessons.size())) + QList<qsizetype>{0};
    return {core, facts};
}

} // namespace

Wishes SentenceChoice::wishes(const IndexedCase &item, const Inquiry &inquiry,
                              const QuestionMatch &match) {
    const auto lesson = section(item, item.lessonSection());
    const auto summary = section(item, IndexedCase::summary);
    const auto shortForm = summary + lesson.first(std::min<qsizetype>(1, lesson.size()));
    switch (inquiry.kind) {
    case Kind::Reasons:
        return {{}, section(item, causesSection(item)) + summary};
    case Kind::Lessons:
        return {{}, lesson + summary};
    case Kind::Summary:
        return {shortForm, acrossSections(item, 0)};
    case Kind::Explain:
        return {shortForm, acrossSections(item, 0) + acrossSections(item, 1)};
    case Kind::Question:
        break;
    }
    return forQuestion(item, inquiry, match);
}
