#include "bench/HandWritten.h"
#include "bench/Measure.h"
#include "bench/SampleRecords.h"
#include "records/Json.h"

namespace {

constexpr auto dates = DateForm::secondsSince2001;

/// Runs a function on a text or a record again and again, and tells how many bytes of JSON pass.
template <class Input, class Function>
void measure(const char *name, const Input &input, qsizetype bytes, Function function) {
    benchmark::RegisterBenchmark(name, [=, &input](benchmark::State &state) {
        for (auto round : state) {
            Q_UNUSED(round)
            benchmark::DoNotOptimize(function(input));
        }
        state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * bytes);
    })->Unit(benchmark::kMillisecond);
}

} // namespace

int main(int argc, char **argv) {
    const auto shortCards = SampleRecords::shortCards();
    const auto longCards = SampleRecords::longCards();
    const auto library = SampleRecords::library();
    const auto shortText = Json::encode(shortCards, dates);
    const auto longText = Json::encode(longCards, dates);
    const auto libraryText = Json::encode(library, dates);

    require(HandWritten::encode(shortCards) == shortText, "short cards, encoded");
    require(HandWritten::encode(longCards) == longText, "long cards, encoded");
    require(HandWritten::encode(library) == libraryText, "library, encoded");
    require(HandWritten::decodeSearchPage(shortText).items == shortCards.items, "short cards");
    require(HandWritten::decodeSearchPage(longText).items == longCards.items, "long cards");
    require(HandWritten::decodeLibrary(libraryText) == library, "library");
    require(Json::decode<LocalLibrary>(libraryText, dates) == library, "library, decoded");

    const auto decodePage = [](const QByteArray &text) {
        return Json::decode<SearchPage>(text, dates);
    };
    const auto decodeLibrary = [](const QByteArray &text) {
        return Json::decode<LocalLibrary>(text, dates);
    };
    const auto encode = [](const auto &record) { return Json::encode(record, dates); };
    const auto encodeByHand = [](const auto &record) { return HandWritten::encode(record); };

    measure("decode/short cards/codec", shortText, shortText.size(), decodePage);
    measure("decode/short cards/reference", shortText, shortText.size(),
            HandWritten::decodeSearchPage);
    measure("decode/long cards/codec", longText, longText.size(), decodePage);
    measure("decode/long cards/reference", longText, longText.size(),
            HandWritten::decodeSearchPage);
    measure("decode/library/codec", libraryText, libraryText.size(), decodeLibrary);
    measure("decode/library/reference", libraryText, libraryText.size(),
            HandWritten::decodeLibrary);
    measure("encode/short cards/codec", shortCards, shortText.size(), encode);
    measure("encode/short cards/reference", shortCards, shortText.size(), encodeByHand);
    measure("encode/long cards/codec", longCards, longText.size(), encode);
    measure("encode/long cards/reference", longCards, longText.size(), encodeByHand);
    measure("encode/library/codec", library, libraryText.size(), encode);
    measure("encode/library/reference", library, libraryText.size(), encodeByHand);

    std::fprintf(stderr, "Short cards %.1f MB, long cards %.1f MB, library %.1f MB\n",
                 static_cast<double>(shortText.size()) / 1e6,
                 static_cast<double>(longText.size()) / 1e6,
                 static_cast<double>(libraryText.size()) / 1e6);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
