// Start-up, in order: the saved project, then everything derived from it.

#include "AppModel.h"

void AppModel::bootstrap()
{
    loadSavedProject();
    refreshAfterLoad();
}

void AppModel::refreshAfterLoad()
{
    refreshReviewImages();
    refreshProjectSnapshots();
}
