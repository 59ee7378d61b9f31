#pragma once

#include "platform/RandomSource.h"

class SystemRandom final : public RandomSource {
public:
    std::optional<QByteArray> bytes(qsizetype count) override;
};
