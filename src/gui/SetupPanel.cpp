#include "SetupPanel.h"

#include "BusyState.h"
#include "Dialogs.h"
#include "ModelWatcher.h"
#include "model/AppModel.h"
#include "model/LanguageCatalog.h"
#include "simulator/DeviceLabels.h"

#include <QApplication>
#include <QCheckBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QProcess>
#include <QScrollArea>
#include <QSignalBlocker>
#include <QTableWidget>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {

constexpr int codeRole = Qt::UserRole + 1;

enum DeviceColumn { useColumn, nameColumn, runtimeColumn, stateColumn, udidColumn };
enum ScreenColumn { screenNameColumn, stateNameColumn, sampleColumn, waitColumn };

// A field the user may be typing in is left alone; otherwise it shows the model.
void showText(QLineEdit *edit, const QString &text)
{
    if (edit->hasFocus() || edit->text() == text)
        return;
    const QSignalBlocker blocker(edit);
    edit->setText(text);
}

// Launch arguments as one line: blanks separate them, quotes keep one together.
QString argumentLine(const QStringList &arguments)
{
    QStringList quoted;
    for (const QString &argument : arguments)
        quoted.append(argument.contains(QLatin1Char(' ')) ? QLatin1Char('"') + argument + QLatin1Char('"') : argument);
    return quoted.join(QLatin1Char(' '));
}

QGroupBox *section(const QString &title, QLayout *layout)
{
    auto *box = new QGroupBox(title);
    box->setLayout(layout);
    return box;
}

} // namespace

SetupPanel::SetupPanel(const PanelContext &context, QWidget *parent)
    : QWidget(parent), m_context(context), m_actions(new PanelActions(context, this))
{
    auto *content = new QWidget;
    auto *column = new QVBoxLayout(content);
    column->addWidget(simulatorSection());
    column->addWidget(appSection());
    column->addWidget(languageSection());
    column->addWidget(outputSection());
    column->addWidget(launchSection());
    column->addWidget(screenSection());
    column->addStretch();

    auto *scroll = new QScrollArea;
    scroll->setWidget(content);
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(scroll);

    context.watcher.watch(this, [this] { refresh(); });
}

QWidget *SetupPanel::simulatorSection()
{
    AppModel &model = m_context.model;
    m_attach = m_actions->add(QStringLiteral("&Attach Simulator"), [&model] { model.attachToBootedSimulator(); });
    QAction *refresh = m_actions->add(QStringLiteral("Refresh &Devices"), [&model] { model.refreshDevices(); });

    m_attached = new QLabel;
    m_attached->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_devices = new QTreeWidget;
    m_devices->setHeaderLabels({QStringLiteral("Generate"), QStringLiteral("Device"), QStringLiteral("Runtime"),
                                QStringLiteral("State"), QStringLiteral("UDID")});
    m_devices->setRootIsDecorated(false);
    m_devices->setMinimumHeight(120);
    m_devices->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_devices->setAccessibleName(QStringLiteral("Devices"));
    connect(m_devices, &QTreeWidget::itemChanged, this, &SetupPanel::deviceToggled);

    auto *buttons = new QHBoxLayout;
    buttons->addWidget(PanelActions::button(m_attach));
    buttons->addWidget(PanelActions::button(refresh));
    buttons->addStretch();
    auto *layout = new QVBoxLayout;
    layout->addWidget(m_attached);
    layout->addWidget(m_devices);
    layout->addLayout(buttons);
    return section(QStringLiteral("Simulator"), layout);
}

QWidget *SetupPanel::appSection()
{
    AppModel &model = m_context.model;
    QAction *refresh = m_actions->add(QStringLiteral("Refresh &Apps"), [&model] { model.refreshInstalledApps(); });
    QAction *build = m_actions->add(QStringLiteral("Choose .app &Build…"), [this] {
        if (const std::optional<QString> path = m_context.dialogs.chooseAppBuild(this))
            m_context.model.setAppBundle(*path);
    });

    m_app = new QLabel;
    m_app->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_app->setWordWrap(true);
    m_apps = new QListWidget;
    m_apps->setMaximumHeight(110);
    m_apps->setAccessibleName(QStringLiteral("Installed apps"));
    connect(m_apps, &QListWidget::itemClicked, this, &SetupPanel::appChosen);

    auto *buttons = new QHBoxLayout;
    buttons->addWidget(PanelActions::button(refresh));
    buttons->addWidget(PanelActions::button(build));
    buttons->addStretch();
    auto *layout = new QVBoxLayout;
    layout->addWidget(m_app);
    layout->addWidget(new QLabel(QStringLiteral("Installed on the simulator (click one to use it):")));
    layout->addWidget(m_apps);
    layout->addLayout(buttons);
    return section(QStringLiteral("App"), layout);
}

QWidget *SetupPanel::languageSection()
{
    m_search = new QLineEdit;
    m_search->setPlaceholderText(QStringLiteral("Search languages"));
    m_search->setClearButtonEnabled(true);
    connect(m_search, &QLineEdit::textChanged, this, &SetupPanel::filterLanguages);

    m_languages = new QListWidget;
    m_languages->setMinimumHeight(160);
    m_languages->setAccessibleName(QStringLiteral("Languages"));
    for (const LanguageOption &option : LanguageCatalog::options()) {
        auto *item = new QListWidgetItem(LanguageCatalog::label(option.code) + QStringLiteral(" \u2014 ") + option.code);
        item->setData(codeRole, option.code);
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsUserCheckable);
        item->setCheckState(Qt::Unchecked);
        m_languages->addItem(item);
    }
    connect(m_languages, &QListWidget::itemChanged, this, &SetupPanel::languageToggled);

    m_selectedLanguages = new QLabel;
    m_selectedLanguages->setWordWrap(true);
    m_customLanguage = new QLineEdit;
    m_customLanguage->setPlaceholderText(QStringLiteral("Other locale code, such as pt-PT"));
    QAction *add = m_actions->add(QStringLiteral("Add &Language"), [this] {
        m_context.model.addCustomLanguage(m_customLanguage->text());
        m_customLanguage->clear();
    });
    connect(m_customLanguage, &QLineEdit::returnPressed, add, &QAction::trigger);

    auto *custom = new QHBoxLayout;
    custom->addWidget(m_customLanguage, 1);
    custom->addWidget(PanelActions::button(add));
    auto *layout = new QVBoxLayout;
    layout->addWidget(m_selectedLanguages);
    layout->addWidget(m_search);
    layout->addWidget(m_languages);
    layout->addLayout(custom);
    return section(QStringLiteral("Languages"), layout);
}

QWidget *SetupPanel::outputSection()
{
    QAction *choose = m_actions->add(QStringLiteral("Choose &Output Folder…"), [this] {
        if (const std::optional<QString> folder = m_context.dialogs.chooseFolder(
                this, QStringLiteral("Choose Output Folder"), m_context.model.project().outputDirectory))
            m_context.model.setOutputDirectory(*folder);
    });
    QAction *reveal = m_actions->add(QStringLiteral("Reveal Output &Folder"),
                                     [this] { m_context.model.revealOutputDirectory(); });
    m_output = new QLineEdit;
    m_output->setReadOnly(true);
    m_output->setAccessibleName(QStringLiteral("Output folder"));
    auto *layout = new QHBoxLayout;
    layout->addWidget(m_output, 1);
    layout->addWidget(PanelActions::button(choose));
    layout->addWidget(PanelActions::button(reveal));
    return section(QStringLiteral("Output folder"), layout);
}

QWidget *SetupPanel::launchSection()
{
    AppModel &model = m_context.model;
    m_launchWait = new QDoubleSpinBox;
    m_launchWait->setRange(0, 600);
    m_launchWait->setDecimals(1);
    m_launchWait->setSingleStep(0.5);
    m_launchWait->setSuffix(QStringLiteral(" s"));
    m_launchWait->setKeyboardTracking(false);
    connect(m_launchWait, &QDoubleSpinBox::valueChanged, this,
            [this, &model](double seconds) { edit([&model, seconds] { model.setLaunchWaitSeconds(seconds); }); });

    m_resetAppData = new QCheckBox(QStringLiteral("Reset the app's data before each language"));
    connect(m_resetAppData, &QCheckBox::toggled, this,
            [this, &model](bool on) { edit([&model, on] { model.setResetAppData(on); }); });
    m_openSimulator = new QCheckBox(QStringLiteral("Open the Simulator window while generating"));
    connect(m_openSimulator, &QCheckBox::toggled, this,
            [this, &model](bool on) { edit([&model, on] { model.setOpenSimulator(on); }); });

    m_arguments = new QLineEdit;
    m_arguments->setPlaceholderText(QStringLiteral("-UITestMode YES"));
    connect(m_arguments, &QLineEdit::editingFinished, this, [this, &model] {
        const QStringList arguments = QProcess::splitCommand(m_arguments->text());
        edit([&model, arguments] { model.setGlobalLaunchArguments(arguments); });
    });
    m_stateArgument = new QLineEdit;
    connect(m_stateArgument, &QLineEdit::editingFinished, this, [this, &model] {
        const QString name = m_stateArgument->text();
        edit([&model, name] { model.setStateArgumentName(name); });
    });
    m_sampleArgument = new QLineEdit;
    m_sampleArgument->setPlaceholderText(QStringLiteral("none"));
    connect(m_sampleArgument, &QLineEdit::editingFinished, this, [this, &model] {
        const QString name = m_sampleArgument->text();
        edit([&model, name] { model.setSampleNameArgumentName(name); });
    });

    auto *form = new QFormLayout;
    form->addRow(QStringLiteral("Wait after launch:"), m_launchWait);
    form->addRow(QString(), m_resetAppData);
    form->addRow(QString(), m_openSimulator);
    form->addRow(QStringLiteral("Launch arguments:"), m_arguments);
    form->addRow(QStringLiteral("State argument name:"), m_stateArgument);
    form->addRow(QStringLiteral("Sample name argument:"), m_sampleArgument);
    return section(QStringLiteral("Launch"), form);
}

QWidget *SetupPanel::screenSection()
{
    m_screens = new QTableWidget(0, 4);
    m_screens->setHorizontalHeaderLabels({QStringLiteral("Checkpoint"), QStringLiteral("State"),
                                          QStringLiteral("Sample name"), QStringLiteral("Launch wait (s)")});
    m_screens->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    m_screens->verticalHeader()->setVisible(false);
    m_screens->setMinimumHeight(120);
    m_screens->setAccessibleName(QStringLiteral("Screens"));
    connect(m_screens, &QTableWidget::itemChanged, this, &SetupPanel::screenEdited);
    auto *layout = new QVBoxLayout;
    layout->addWidget(new QLabel(QStringLiteral("What the app is told for each checkpoint when it is launched:")));
    layout->addWidget(m_screens);
    return section(QStringLiteral("Screens"), layout);
}

void SetupPanel::edit(const std::function<void()> &operation)
{
    // An edit made while another operation runs is refused; the next
    // refresh shows the value the project kept.
    if (!m_context.busy.run(operation))
        refresh();
}

void SetupPanel::refresh()
{
    refreshDevices();
    refreshApps();
    refreshLanguages();
    refreshLaunchChoices();
    refreshScreens();
    m_actions->update();
}

void SetupPanel::refreshDevices()
{
    const AppModel &model = m_context.model;
    const std::optional<QString> attached = model.attachedDeviceID();
    m_attached->setText(attached ? QStringLiteral("Attached: ")
                                       + DeviceLabels::describe(model.displayNameForDeviceID(*attached), *attached,
                                                                model.deviceState(*attached))
                                 : QStringLiteral("No simulator attached. Boot one, open your app in it, then "
                                                  "attach."));
    const QSignalBlocker blocker(m_devices);
    m_devices->clear();
    for (const SimulatorDevice &device : model.availableDevices()) {
        auto *item = new QTreeWidgetItem({QString(), device.name, device.runtime, device.state, device.udid});
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsUserCheckable | Qt::ItemIsSelectable);
        item->setCheckState(useColumn, model.project().devices.contains(device.udid) ? Qt::Checked : Qt::Unchecked);
        if (attached == device.udid) {
            QFont font = item->font(nameColumn);
            font.setBold(true);
            item->setFont(nameColumn, font);
        }
        m_devices->addTopLevelItem(item);
    }
}

void SetupPanel::refreshApps()
{
    const AppModel &model = m_context.model;
    const ScreenshotProject &p = model.project();
    QString text = p.bundleId.isEmpty() ? QStringLiteral("No app chosen yet.")
                                        : QStringLiteral("App: %1 (%2)").arg(p.appName, p.bundleId);
    if (!p.appPath.isEmpty())
        text += QStringLiteral("\nBuild: ") + p.appPath;
    m_app->setText(text);
    const QSignalBlocker blocker(m_apps);
    m_apps->clear();
    for (const InstalledSimulatorApp &app : model.installedApps()) {
        auto *item = new QListWidgetItem(QStringLiteral("%1 \u2014 %2").arg(app.name, app.bundleId));
        item->setData(codeRole, app.bundleId);
        if (app.bundleId == p.bundleId) {
            QFont font = item->font();
            font.setBold(true);
            item->setFont(font);
        }
        m_apps->addItem(item);
    }
}

void SetupPanel::refreshLanguages()
{
    const QStringList &chosen = m_context.model.project().languages;
    QStringList labels;
    for (const QString &code : chosen)
        labels.append(code);
    m_selectedLanguages->setText(chosen.isEmpty() ? QStringLiteral("No language selected.")
                                                  : QStringLiteral("Selected (%1): %2").arg(chosen.size()).arg(labels.join(QStringLiteral(", "))));
    const QSignalBlocker blocker(m_languages);
    QStringList listed;
    for (int i = 0; i < m_languages->count(); ++i) {
        QListWidgetItem *item = m_languages->item(i);
        const QString code = item->data(codeRole).toString();
        listed.append(code);
        item->setCheckState(chosen.contains(code) ? Qt::Checked : Qt::Unchecked);
    }
    // Codes typed in by hand are listed too, at the top, so they can be unticked.
    for (const QString &code : chosen) {
        if (listed.contains(code))
            continue;
        auto *item = new QListWidgetItem(LanguageCatalog::label(code) + QStringLiteral(" \u2014 custom"));
        item->setData(codeRole, code);
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsUserCheckable);
        item->setCheckState(Qt::Checked);
        m_languages->insertItem(0, item);
    }
    filterLanguages();
}

void SetupPanel::filterLanguages()
{
    const QString needle = m_search->text().trimmed();
    for (int i = 0; i < m_languages->count(); ++i) {
        QListWidgetItem *item = m_languages->item(i);
        item->setHidden(!needle.isEmpty() && !item->text().contains(needle, Qt::CaseInsensitive));
    }
}

void SetupPanel::refreshLaunchChoices()
{
    const ScreenshotProject &p = m_context.model.project();
    showText(m_output, p.outputDirectory);
    if (!m_launchWait->hasFocus() && m_launchWait->value() != p.launchWaitSeconds) {
        const QSignalBlocker blocker(m_launchWait);
        m_launchWait->setValue(p.launchWaitSeconds);
    }
    {
        const QSignalBlocker reset(m_resetAppData);
        m_resetAppData->setChecked(p.resetAppData);
        const QSignalBlocker open(m_openSimulator);
        m_openSimulator->setChecked(p.openSimulator);
    }
    showText(m_arguments, argumentLine(p.globalLaunchArguments));
    showText(m_stateArgument, p.stateArgumentName);
    showText(m_sampleArgument, p.sampleNameArgumentName);
}

void SetupPanel::refreshScreens()
{
    const QWidget *focus = QApplication::focusWidget();
    if (focus && focus != m_screens && m_screens->isAncestorOf(focus))
        return; // a cell is being edited: never under the user's typing
    const QList<ScreenDraft> &screens = m_context.model.project().screens;
    const QSignalBlocker blocker(m_screens);
    m_screens->setRowCount(int(screens.size()));
    for (int row = 0; row < screens.size(); ++row) {
        const ScreenDraft &screen = screens.at(row);
        auto *name = new QTableWidgetItem(QStringLiteral("%1 %2").arg(row + 1, 2, 10, QLatin1Char('0')).arg(screen.name));
        name->setFlags(Qt::ItemIsEnabled);
        m_screens->setItem(row, screenNameColumn, name);
        m_screens->setItem(row, stateNameColumn, new QTableWidgetItem(screen.state));
        m_screens->setItem(row, sampleColumn, new QTableWidgetItem(screen.sampleName));
        auto *wait = new QTableWidgetItem;
        wait->setData(Qt::EditRole, screen.launchWaitSeconds);
        m_screens->setItem(row, waitColumn, wait);
    }
}

void SetupPanel::deviceToggled(QTreeWidgetItem *item, int column)
{
    if (column != useColumn)
        return;
    const QString udid = item->text(udidColumn);
    AppModel &model = m_context.model;
    // Deferred: the list is rebuilt by the change, under this very signal.
    QMetaObject::invokeMethod(this, [this, &model, udid] { edit([&model, udid] { model.toggleGenerationDevice(udid); }); },
                              Qt::QueuedConnection);
}

void SetupPanel::appChosen(QListWidgetItem *item)
{
    const QString bundleId = item->data(codeRole).toString();
    AppModel &model = m_context.model;
    for (const InstalledSimulatorApp &app : model.installedApps())
        if (app.bundleId == bundleId && app.bundleId != model.project().bundleId)
            QMetaObject::invokeMethod(this, [this, &model, app] { edit([&model, app] { model.selectInstalledApp(app); }); },
                                      Qt::QueuedConnection);
}

void SetupPanel::languageToggled(QListWidgetItem *item)
{
    const QString code = item->data(codeRole).toString();
    AppModel &model = m_context.model;
    QMetaObject::invokeMethod(this, [this, &model, code] { edit([&model, code] { model.toggleLanguage(code); }); },
                              Qt::QueuedConnection);
}

void SetupPanel::screenEdited(QTableWidgetItem *item)
{
    const int row = item->row();
    auto text = [this, row](int column) {
        const QTableWidgetItem *cell = m_screens->item(row, column);
        return cell ? cell->data(Qt::EditRole).toString() : QString();
    };
    const QString state = text(stateNameColumn);
    const QString sample = text(sampleColumn);
    const double wait = text(waitColumn).toDouble();
    AppModel &model = m_context.model;
    QMetaObject::invokeMethod(
        this, [this, &model, row, state, sample, wait] { edit([&] { model.setScreenDetails(row, state, sample, wait); }); },
        Qt::QueuedConnection);
}
