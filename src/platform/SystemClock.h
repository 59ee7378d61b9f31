#pragma once

#include "platform/Clock.h"

class SystemClock final : public Clock {
public:
    QDateTime now() const override;
    [[nodiscard]] Task<void> sleep(std::chrono::milliseconds duration,
                                   std::stop_token stop) override;
};
