#include "store/ArchiveModel.h"
#include "tests/store/SampleCatalogue.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

using namespace Qt::StringLiterals;

namespace {

/// Rows as a view knows them: only from what the model reports.
class Mirror final {
public:
    explicit Mirror(const QAbstractItemModel &model) : m_model(model) {
        const auto follow = [&](auto signal, auto slot) {
            QObject::connect(&model, signal, &m_context, slot);
        };
        follow(&QAbstractItemModel::rowsInserted, [this](const QModelIndex &, int first, int last) {
            for (int at = first; at <= last; ++at)
                rows.insert(at, row(at));
        });
        follow(&QAbstractItemModel::rowsRemoved, [this](const QModelIndex &, int first, int last) {
            rows.remove(first, last - first + 1);
        });
        follow(&QAbstractItemModel::rowsMoved,
               [this](const QModelIndex &, int first, int last, const QModelIndex &, int before) {
                   ASSERT_EQ(first, last);
                   rows.move(first, before > first ? before - 1 : before);
               });
        follow(&QAbstractItemModel::dataChanged,
               [this](const QModelIndex &first, const QModelIndex &last) {
                   for (int at = first.row(); at <= last.row(); ++at)
                       rows[at] = row(at);
               });
        follow(&QAbstractItemModel::modelReset, [] { FAIL() << "a reset loses a view's place"; });
        follow(&QAbstractItemModel::layoutChanged, [] { FAIL() << "so does a new layout"; });
    }

    static QString written(const Archive &archive) {
        return archive.id + u'|' + archive.title + u'|' + QString::number(archive.count);
    }

    QStringList rows;

private:
    QString row(int at) const {
        const auto index = m_model.index(at, 0);
        return m_model.data(index, ArchiveModel::archiveId).toString() + u'|' +
               m_model.data(index, ArchiveModel::title).toString() + u'|' +
               m_model.data(index, ArchiveModel::count).toString();
    }

    const QAbstractItemModel &m_model;
    QObject m_context;
};

QStringList written(const QList<Archive> &archives) {
    QStringList rows;
    for (const auto &archive : archives)
        rows.append(Mirror::written(archive));
    return rows;
}

} // namespace

TEST(ArchiveModel, reportsEveryReplacementRowByRow) {
    ArchiveModel model;
    const QAbstractItemModelTester tester(&model,
                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    Mirror mirror(model);
    std::mt19937 random(20261124);
    const auto below = [&](int limit) { return static_cast<int>(random() % limit); };
    for (int round = 0; round < 400; ++round) {
        QList<Archive> items;
        for (int id = 0; id < 9; ++id) {
            if (below(3) > 0)
                items.append(SampleCatalogue::archive(QString(QChar(u'a' + id)), below(3)));
        }
        // A service that repeats itself may not leave rows behind.
        if (below(4) == 0 && !items.isEmpty())
            items.append(items[below(static_cast<int>(items.size()))]);
        if (below(2) > 0)
            std::shuffle(items.begin(), items.end(), random);
        model.setItems(items);
        ASSERT_EQ(model.items(), items) << "round " << round;
        ASSERT_EQ(mirror.rows, written(items)) << "round " << round;
    }
}

TEST(ArchiveModel, touchesOnlyWhatDiffers) {
    const auto a = SampleCatalogue::archive(u"a"_s);
    const auto b = SampleCatalogue::archive(u"b"_s);
    const auto c = SampleCatalogue::archive(u"c"_s);
    const auto changedB = SampleCatalogue::archive(u"b"_s, 99);
    struct Row {
        QList<Archive> before;
        QList<Archive> after;
        int inserted, removed, moved, changed;
    };
    const std::vector<Row> rows = {
        {{a, b, c}, {a, b, c}, 0, 0, 0, 0},
        {{}, {a, b}, 2, 0, 0, 0},
        {{a, b, c}, {}, 0, 1, 0, 0},
        {{a, b, c}, {b}, 0, 2, 0, 0},
        {{a, b, c}, {a, changedB, c}, 0, 0, 0, 1},
        {{a, b, c}, {c, a, b}, 0, 0, 1, 0},
        {{a, c}, {a, b, c}, 1, 0, 0, 0},
        {{a, b}, {changedB, c}, 1, 1, 0, 1},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE((written(row.before).join(u' ') + u" to "_s + written(row.after).join(u' '))
                         .toStdString());
        ArchiveModel model;
        model.setItems(row.before);
        const QSignalSpy inserted(&model, &QAbstractItemModel::rowsInserted);
        const QSignalSpy removed(&model, &QAbstractItemModel::rowsRemoved);
        const QSignalSpy moved(&model, &QAbstractItemModel::rowsMoved);
        const QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
        model.setItems(row.after);
        EXPECT_EQ(model.items(), row.after);
        EXPECT_EQ(inserted.size(), row.inserted);
        EXPECT_EQ(removed.size(), row.removed);
        EXPECT_EQ(moved.size(), row.moved);
        EXPECT_EQ(changed.size(), row.changed);
    }
}
