#pragma once

namespace tonquay::platform {

class AcdControl;
class AudioEngine;
class Clock;
class Diagnostics;
class Dialogs;
class EventLoop;
class FileSystem;
class HelpViewer;
class Mci;
class Processes;
class SettingsStore;
class SystemInfo;
class WmaEncoder;

/// Everything that the program asks of the world, handed to it in one piece. All of it outlives the program.
struct Platform {
    FileSystem& files;
    Processes& processes;
    EventLoop& loop;
    Clock& clock;
    Dialogs& dialogs;
    AudioEngine& engine;
    WmaEncoder& wma;
    AcdControl& acd;
    Mci& mci;
    SettingsStore& settings;
    SystemInfo& system;
    HelpViewer& help;
    Diagnostics& log;

    /// The same world with another one in the place of one of its parts.
    Platform with(Processes& other) const
    {
        return {files, other, loop, clock, dialogs, engine, wma, acd, mci, settings, system, help, log};
    }
    Platform with(EventLoop& other) const
    {
        return {files, processes, other, clock, dialogs, engine, wma, acd, mci, settings, system, help, log};
    }
    Platform with(SettingsStore& other) const
    {
        return {files, processes, loop, clock, dialogs, engine, wma, acd, mci, other, system, help, log};
    }
};

}
