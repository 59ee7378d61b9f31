#pragma once

#include "platform/Platform.h"
#include "tests/support/FixedAppearance.h"
#include "tests/support/FixedRandom.h"
#include "tests/support/ManualClock.h"
#include "tests/support/MemoryCredentials.h"
#include "tests/support/MemoryFiles.h"
#include "tests/support/MemoryPreferences.h"
#include "tests/support/RecordingBrowser.h"
#include "tests/support/RecordingBrowserSession.h"

/// A whole system for one test: QtTransport against a ScriptedService, or a FakeTransport. A
/// benchmark has files or time that are true.
template <class TransportKind, class FilesKind = MemoryFiles, class ClockKind = ManualClock>
struct TestPlatform {
    TransportKind transport;
    MemoryPreferences preferences;
    ClockKind clock;
    RecordingBrowser browser;
    FixedAppearance appearance;
    FilesKind files;
    MemoryCredentials credentials;
    FixedRandom random;
    RecordingBrowserSession browserSession;

    Platform platform() {
        return {transport, preferences, clock,  browser,       appearance,
                files,     credentials, random, browserSession};
    }
};
