#pragma once
// What every panel works with: the model it shows and drives, the watcher
// that tells it to re-read, the one-action-at-a-time guard, the dialogs and
// the shared thumbnail loader.

class AppModel;
class BusyState;
class Dialogs;
class ModelWatcher;
class ThumbnailLoader;

struct PanelContext
{
    AppModel &model;
    ModelWatcher &watcher;
    BusyState &busy;
    Dialogs &dialogs;
    ThumbnailLoader &thumbnails;
};
