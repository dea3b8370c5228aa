#pragma once
// The Vantrel window: the library in the sidebar beside the four panels
// (Setup, Record, Generate, Review), a banner for the last error, the menus
// with their shortcuts, and the floating recorder panel while recording.

#include "BusyState.h"
#include "ModelWatcher.h"
#include "PanelContext.h"
#include "ThumbnailLoader.h"

#include <QMainWindow>

class AppModel;
class Dialogs;
class GeneratePanel;
class LibraryPanel;
class QLabel;
class QListWidget;
class QStackedWidget;
class RecordPanel;
class RecorderPanel;
class ReviewPanel;
class SetupPanel;

class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    enum Panel { setupPanel, recordPanel, generatePanel, reviewPanel };

    MainWindow(AppModel &model, Dialogs &dialogs, QWidget *parent = nullptr);
    ~MainWindow() override;

    void showPanel(Panel panel);
    Panel currentPanel() const;

    LibraryPanel *library() const { return m_library; }
    SetupPanel *setup() const { return m_setup; }
    RecordPanel *record() const { return m_record; }
    GeneratePanel *generate() const { return m_generate; }
    ReviewPanel *review() const { return m_review; }
    RecorderPanel *recorder() const { return m_recorder; }
    QWidget *banner() const { return m_banner; }
    QLabel *bannerText() const { return m_bannerText; }
    BusyState &busy() { return m_busy; }

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    QWidget *makeBanner();
    QWidget *makeSidebar();
    void makeMenus();
    void refresh();

    AppModel &m_model;
    ModelWatcher m_watcher;
    BusyState m_busy;
    ThumbnailLoader m_thumbnails;
    PanelContext m_context;

    LibraryPanel *m_library = nullptr;
    SetupPanel *m_setup = nullptr;
    RecordPanel *m_record = nullptr;
    GeneratePanel *m_generate = nullptr;
    ReviewPanel *m_review = nullptr;
    RecorderPanel *m_recorder = nullptr;
    QListWidget *m_navigation = nullptr;
    QStackedWidget *m_stack = nullptr;
    QWidget *m_banner = nullptr;
    QLabel *m_bannerText = nullptr;
};
