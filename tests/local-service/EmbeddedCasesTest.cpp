#include "CaseData.h"
#include "RunningService.h"

#include "records/ArchiveStyle.h"

#include <gtest/gtest.h>

namespace {

TEST(EmbeddedCases, AreWholeAndLeadToEachOther) {
    RunningService running(CaseData::embedded());
    qint64 total = 0;
    for (const QByteArray &text : CaseData::embedded()) {
        const auto file = CaseData::decode(text);
        EXPECT_GE(file.cases.size(), 12) << file.archive.id.toStdString();
        total += file.cases.size();
        for (const auto &written : file.cases) {
            const auto address =
                "/v1/cases/" + (file.archive.id + QLatin1Char('/') + written.id).toStdString();
            const auto entry = running.read<CaseEntry>(address);
            EXPECT_FALSE(entry.sections.isEmpty()) << address;
            EXPECT_FALSE(entry.sources.isEmpty()) << address;
            EXPECT_EQ(entry.related.value_or(QList<CaseCard>()).size(),
                      written.related.value_or(QList<QString>()).size())
                << address;
        }
    }
    EXPECT_EQ(running.read<Health>("/v1/health").total, total);
    EXPECT_EQ(running.read<Items<Archive>>("/v1/archives").items.size(),
              ArchiveStyle::ids().size());
}

TEST(EmbeddedCases, TakeTurnsAmongTheNewest) {
    RunningService running(CaseData::embedded());
    const auto first = running.read<SearchPage>("/v1/search?limit=5");
    EXPECT_TRUE(first.hasMore);
    for (qsizetype index = 0; index < first.items.size(); ++index)
        EXPECT_EQ(first.items[index].archive, ArchiveStyle::ids()[index]);
}

} // namespace
