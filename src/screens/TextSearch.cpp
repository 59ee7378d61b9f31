#include "screens/TextSearch.h"

#include <cstdint>
#include <string_view>

bool containsWords(const QByteArray &text, const QByteArray &words) {
    // Compilers make a few instructions of the comparisons of a stride.
    constexpr std::size_t stride = 64;
    const std::string_view all(text.constData(), static_cast<std::size_t>(text.size()));
    const std::string_view wanted(words.constData(), static_cast<std::size_t>(words.size()));
    const std::size_t whole = stride + wanted.size() - 1;
    std::size_t at = 0;
    for (; at + whole <= all.size(); at += stride) {
        const char *first = all.data() + at;
        const char *last = first + wanted.size() - 1;
        std::uint8_t maybe = 0;
        for (std::size_t place = 0; place < stride; ++place)
            maybe |= std::uint8_t(first[place] == wanted.front()) &
                     std::uint8_t(last[place] == wanted.back());
        if (maybe != 0 && all.substr(at, whole).find(wanted) != std::string_view::npos)
            return true;
    }
    return all.substr(at).find(wanted) != std::string_view::npos;
}
