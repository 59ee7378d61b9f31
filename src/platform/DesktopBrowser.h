#pragma once

#include "platform/Browser.h"

class DesktopBrowser final : public Browser {
public:
    bool open(const QUrl &url) override;
};
