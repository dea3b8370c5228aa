#pragma once
// Setup: the simulator and its devices, the app, the languages, the output
// folder and every other choice the project keeps. Each edit is saved at once.

#include "PanelActions.h"

#include <QWidget>

class QCheckBox;
class QDoubleSpinBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QListWidgetItem;
class QTableWidget;
class QTableWidgetItem;
class QTreeWidget;
class QTreeWidgetItem;

class SetupPanel : public QWidget
{
    Q_OBJECT

public:
    explicit SetupPanel(const PanelContext &context, QWidget *parent = nullptr);

    const QList<QAction *> &actions() const { return m_actions->all(); }

    // For tests: the widgets a person would use.
    QTreeWidget *deviceList() const { return m_devices; }
    QListWidget *appList() const { return m_apps; }
    QListWidget *languageList() const { return m_languages; }
    QLineEdit *languageSearch() const { return m_search; }
    QLineEdit *customLanguage() const { return m_customLanguage; }
    QLineEdit *outputFolder() const { return m_output; }
    QDoubleSpinBox *launchWait() const { return m_launchWait; }
    QLineEdit *launchArguments() const { return m_arguments; }
    QTableWidget *screenTable() const { return m_screens; }
    QCheckBox *resetAppData() const { return m_resetAppData; }
    QAction *attachAction() const { return m_attach; }

private:
    QWidget *simulatorSection();
    QWidget *appSection();
    QWidget *languageSection();
    QWidget *outputSection();
    QWidget *launchSection();
    QWidget *screenSection();

    void refresh();
    void refreshDevices();
    void refreshApps();
    void refreshLanguages();
    void refreshLaunchChoices();
    void refreshScreens();
    void filterLanguages();
    void edit(const std::function<void()> &operation);

    void deviceToggled(QTreeWidgetItem *item, int column);
    void appChosen(QListWidgetItem *item);
    void languageToggled(QListWidgetItem *item);
    void screenEdited(QTableWidgetItem *item);

    const PanelContext &m_context;
    PanelActions *m_actions;
    QAction *m_attach = nullptr;
    QLabel *m_attached = nullptr;
    QTreeWidget *m_devices = nullptr;
    QLabel *m_app = nullptr;
    QListWidget *m_apps = nullptr;
    QLineEdit *m_search = nullptr;
    QListWidget *m_languages = nullptr;
    QLabel *m_selectedLanguages = nullptr;
    QLineEdit *m_customLanguage = nullptr;
    QLineEdit *m_output = nullptr;
    QDoubleSpinBox *m_launchWait = nullptr;
    QCheckBox *m_resetAppData = nullptr;
    QCheckBox *m_openSimulator = nullptr;
    QLineEdit *m_arguments = nullptr;
    QLineEdit *m_stateArgument = nullptr;
    QLineEdit *m_sampleArgument = nullptr;
    QTableWidget *m_screens = nullptr;
};
