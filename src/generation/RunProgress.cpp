#include "RunProgress.h"

QString runProgressStateName(RunProgressState state)
{
    switch (state) {
    case RunProgressState::idle: return QStringLiteral("idle");
    case RunProgressState::queued: return QStringLiteral("queued");
    case RunProgressState::running: return QStringLiteral("running");
    case RunProgressState::done: return QStringLiteral("done");
    case RunProgressState::failed: return QStringLiteral("failed");
    }
    return QStringLiteral("idle");
}
