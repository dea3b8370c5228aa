#pragma once
// The whole text behind an error whose message shows only the end of a
// tool's long output; empty when the message is the whole text.

#include "AppError.h"
#include "replay/XCTestReplayError.h"

#include <exception>

inline QString errorDetails(const std::exception &error)
{
    if (const auto *appError = dynamic_cast<const AppError *>(&error))
        return appError->details();
    if (const auto *replayError = dynamic_cast<const XCTestReplayError *>(&error))
        return replayError->details();
    return {};
}
