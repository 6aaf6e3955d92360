#pragma once

/** How devhost ends; the numbers are what scripts test, so they never change their meaning. */
enum class ExitCode {
    Ok = 0,
    Usage = 2,
    Plugin = 3,
    Configuration = 4,
    RunDirectory = 5,
    Client = 6,
    Offline = 7,
    Screenshot = 8,
    LogFile = 9,
    Output = 10,
    Display = 11,
};

struct ExitCodeText
{
    ExitCode code;
    const char *text;
};

// clang-format off
constexpr ExitCodeText exitCodeTexts[] = {
    { ExitCode::Ok,            "ended as asked: signal, quit, closed window or --duration" },
    { ExitCode::Usage,         "wrong option, device or command on the command line" },
    { ExitCode::Plugin,        "the plug-in file was refused" },
    { ExitCode::Configuration, "the configuration files cannot be written" },
    { ExitCode::RunDirectory,  "the private copy of the program cannot be made or started" },
    { ExitCode::Client,        "the plug-in made no client for a device" },
    { ExitCode::Offline,       "--require-online: a device was never reached" },
    { ExitCode::Screenshot,    "--screenshot: no device, no view, or a picture cannot be saved" },
    { ExitCode::LogFile,       "a log file cannot be opened" },
    { ExitCode::Output,        "standard output was closed or is full" },
    { ExitCode::Display,       "--gui without a display" },
};
// clang-format on
