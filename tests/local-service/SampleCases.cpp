#include "SampleCases.h"

#include "CaseData.h"

#include "records/JsonEncoder.h"

namespace {

CaseData::WrittenCase written(const char *id, const char *title, qint64 year, qint64 significance,
                              const char *category) {
    CaseData::WrittenCase written;
    written.id = QString::fromUtf8(id);
    written.title = QString::fromUtf8(title);
    written.summary = QStringLiteral("Something went on.");
    written.category = QString::fromUtf8(category);
    written.era = QString::number(year);
    written.year = year;
    written.significance = significance;
    written.org = QStringLiteral("Harbour Board");
    written.companies = {QStringLiteral("Harbour Board")};
    written.sections = {
        {QStringLiteral("What happened"), QStringLiteral("Nothing to tell."), std::nullopt}};
    written.sources = {{QStringLiteral("Yearbook"), QStringLiteral("https://example.org/yearbook"),
                        std::nullopt, std::nullopt}};
    return written;
}

QList<CaseData::WrittenCase> foible() {
    auto quay = written("quay", "Lantern on the quay", 1938, 50, "transport");
    auto ledger = written("ledger", "The open ledger", 1941, 90, "finance");
    ledger.summary = QStringLiteral("A clerk read by lantern light.");
    auto hull = written("hull", "A hull of paper", 1990, 50, "transport");
    hull.sources[0].title = QStringLiteral("Lantern inquiry");
    auto zurich = written("zurich", "Zürich's long Straße", 1999, 20, "design");
    zurich.companies = {QStringLiteral("Ørsted"), QStringLiteral("Tramways of Łódź")};
    zurich.noLaugh = true;
    return {quay, ledger, hull, zurich};
}

QList<CaseData::WrittenCase> lumen() {
    auto glass = written("glass", "Ground glass", 1938, 50, "science");
    glass.org = QStringLiteral("Lantern Works");
    auto moss = written("moss", "Moss under rain", 1990, 70, "science");
    moss.sections[0].body =
        QStringLiteral("Nobody had a lantern <b>with & without</b> oil.\n\nEnd.");
    moss.sources.append({QStringLiteral("A trap"), QStringLiteral("javascript:alert(1)"),
                         std::nullopt, std::nullopt});
    auto tide = written("tide", "Counting the tide", 2007, 30, "science");
    tide.related = QList<QString>{QStringLiteral("foible/quay"), QStringLiteral("foible/gone"),
                                  QStringLiteral("lumen/moss")};
    return {glass, moss, tide};
}

QByteArray file(const char *archive, const QList<CaseData::WrittenCase> &cases) {
    const auto id = QString::fromUtf8(archive);
    const CaseData::File file{
        {id, QStringLiteral("Title"), QStringLiteral("Description."), QStringLiteral("#000000")},
        cases};
    return Json::encode(file);
}

} // namespace

QList<QByteArray> sampleCases() {
    return {file("lumen", lumen()), file("foible", foible())};
}

QList<QByteArray> largerSampleCases() {
    const auto late = written("late", "A late arrival", 2020, 10, "science");
    return {file("lumen", lumen() << late), file("foible", foible())};
}
