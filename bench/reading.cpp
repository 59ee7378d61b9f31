#include "bench/FixedService.h"
#include "bench/OpenProgram.h"
#include "bench/SampleRecords.h"
#include "records/Json.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QTimer>

#include <algorithm>
#include <chrono>

using namespace Qt::StringLiterals;

namespace {

/// A case of 46 KB in eight sections, cut into paragraphs of some 600 characters or each in one.
CaseEntry longCase(const CaseCard &card, bool cut) {
    CaseEntry entry;
    entry.id = card.id;
    entry.key = card.key;
    entry.archive = card.archive;
    entry.title = card.title;
    entry.summary = card.summary;
    entry.category = card.category;
    entry.era = card.era;
    entry.locale = u"en"_s;
    const auto paragraph =
        u"The commission heard forty witnesses in six weeks and found no single cause. "_s.repeated(
            8);
    for (int number = 1; number <= 8; ++number) {
        QStringList paragraphs;
        for (int at = 0; at < 9; ++at)
            paragraphs.append(paragraph.trimmed());
        entry.sections.append(
            {u"Part %1"_s.arg(number), paragraphs.join(cut ? u"\n\n"_s : u" "_s)});
    }
    return entry;
}

/// Saved cards whose titles take one line to three.
LocalLibrary savedCards(qsizetype count) {
    LocalLibrary library;
    const auto cards = SampleRecords::shortCards().items;
    for (qsizetype at = 0; at < count; ++at) {
        auto card = cards[at % cards.size()];
        card.id = QString::number(at);
        card.key = card.archive + u':' + card.id;
        card.title += u" and its sequel"_s.repeated(at % 3);
        library.saved.append(card);
    }
    return library;
}

double secondsSince(std::chrono::steady_clock::time_point begin) {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

/// Seconds by the clock that the toolkit alone takes for the request of a case.
double askBare(const QString &address) {
    static QNetworkAccessManager manager;
    const auto begin = std::chrono::steady_clock::now();
    auto *reply = manager.get(QNetworkRequest(QUrl(address)));
    QEventLoop loop;
    QObject::connect(reply, &QNetworkReply::finished, &loop, &QEventLoop::quit);
    loop.exec();
    require(reply->readAll().size() > 40'000, "the reference");
    reply->deleteLater();
    return secondsSince(begin);
}

/// Half a second for what is done between frames.
void letGo() {
    QEventLoop loop;
    QTimer::singleShot(500, &loop, &QEventLoop::quit);
    loop.exec();
}

class Reading final {
public:
    Reading(const QString &server, const LocalLibrary &library) : m_program(server, library) {
        m_program.goTo(u"saved"_s);
        require(eventually([this] { return rows().size() > 3; }), "the cards");
    }

    OpenProgram &program() { return m_program; }
    QList<QQuickItem *> rows() { return m_program.window().ofType("CaseRow"); }
    QQuickItem *list() { return m_program.window().ofType("CaseList").value(0); }

    /// The text of the first section is in sight.
    bool showsText() {
        const auto texts = m_program.window().ofType("SelectableText");
        return std::any_of(texts.begin(), texts.end(), [this](QQuickItem *text) {
            const auto place = text->mapToScene(QPointF());
            return text->property("text").toString().startsWith(u"The commission"_s) &&
                   place.y() > 0 && place.y() < m_program.window().window()->height();
        });
    }

    /// Seconds by the clock from a press on the card of a row to its text.
    double open(int row) {
        auto *card = rows().at(row);
        const auto begin = std::chrono::steady_clock::now();
        double shown = 0;
        m_program.untilSeen([&] { QMetaObject::invokeMethod(card, "clicked"); },
                            [&] {
                                shown = secondsSince(begin);
                                return showsText();
                            });
        return shown;
    }

    /// Seconds that the main thread worked for each frame while the list was flung so many times.
    std::vector<double> fling(int times) {
        std::vector<double> frames;
        auto before = TimedApplication::worked();
        const auto drawn =
            QObject::connect(m_program.window().window(), &QQuickWindow::frameSwapped,
                             m_program.window().window(), [&] {
                                 const auto now = TimedApplication::worked();
                                 frames.push_back(static_cast<double>(now - before) / 1e9);
                                 before = now;
                             });
        for (int time = 0; time < times; ++time) {
            QMetaObject::invokeMethod(list(), "flick", Q_ARG(qreal, 0), Q_ARG(qreal, -2500));
            require(eventually([this] { return !list()->property("moving").toBool(); }),
                    "the end of a fling");
        }
        QObject::disconnect(drawn);
        require(frames.size() > 60, "the frames");
        std::sort(frames.begin(), frames.end());
        return frames;
    }

private:
    OpenProgram m_program;
};

double part(const std::vector<double> &sorted, double share) {
    return sorted[static_cast<std::size_t>(share * static_cast<double>(sorted.size() - 1))];
}

} // namespace

int main(int argc, char **argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    TimedApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);

    const auto library = savedCards(100'000);
    const auto service = [&](bool cut) {
        return std::make_unique<FixedService>(Json::encode(longCase(library.saved[0], cut)),
                                              FixedService::Pace::flood, "/v1/cases/");
    };
    const auto cut = service(true);
    const auto uncut = service(false);
    std::unique_ptr<Reading> reading;
    std::vector<double> frames;
    const auto begin = [&](const FixedService &from) {
        reading.reset();
        reading = std::make_unique<Reading>(from.base(), library);
    };

    double request = 0;
    measureItself("open/the request alone", [&] {
        askBare(cut->base() + u"/v1/cases/foible/0"_s);
        return request = askBare(cut->base() + u"/v1/cases/foible/0"_s);
    });
    measureItself("open/the first case beyond it", [&] {
        begin(*cut);
        return reading->open(1) - request;
    });
    measureItself("open/another beyond it", [&] { return reading->open(2) - request; });

    measureItself("fling/median", [&] {
        begin(*cut);
        frames = reading->fling(4);
        return part(frames, 0.5);
    });
    measureItself("fling/99 of 100", [&] { return part(frames, 0.99); });
    measureItself("fling/worst", [&] { return frames.back(); });

    const auto step = [&] {
        reading->open(1);
        letGo();
        application.takeLongest();
        const auto before = TimedApplication::worked();
        reading->program().store().setReadingSize(20);
        const auto call = static_cast<double>(TimedApplication::worked() - before) / 1e9;
        letGo();
        return std::max(call, application.takeLongest());
    };
    measureItself("size/paragraphs of 600 characters", [&] {
        begin(*cut);
        return step();
    });
    measureItself("size/paragraphs of 5,600 characters", [&] {
        begin(*uncut);
        return step();
    });
    benchmark::RunSpecifiedBenchmarks();
}
