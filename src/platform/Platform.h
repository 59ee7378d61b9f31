#pragma once

class Browser;
class BrowserSession;
class Clock;
class CredentialStore;
class Files;
class Preferences;
class RandomSource;
class SystemAppearance;
class Transport;

/// All that the program needs of the system, made by main and outliving everything that uses it.
/// Tests hand in their own.
struct Platform {
    Transport &transport;
    Preferences &preferences;
    Clock &clock;
    Browser &browser;
    SystemAppearance &appearance;
    Files &files;
    CredentialStore &credentials;
    RandomSource &random;
    BrowserSession &browserSession;
};
