#pragma once
// A model on a private data root with scripted desktop services, for tests
// of model operations. Nothing here touches the user's real folders.

#include "model/AppModel.h"
#include "platform/scripted/ScriptedPlatformServices.h"

#include <QTemporaryDir>
#include <memory>

struct ModelFixture
{
    QTemporaryDir root;
    ScriptedPlatformServices *platform = nullptr;
    std::unique_ptr<AppModel> model;

    ModelFixture()
    {
        auto services = std::make_unique<ScriptedPlatformServices>();
        platform = services.get();
        model = std::make_unique<AppModel>(root.path(), std::move(services));
    }
};
