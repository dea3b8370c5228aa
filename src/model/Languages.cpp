// Editing the project's language list. Order is the order of selection;
// the last language may be removed (readiness reports an empty list).

#include "AppModel.h"

void AppModel::toggleLanguage(const QString &code)
{
    const ProjectChange change(*this);
    if (m_project.languages.contains(code))
        m_project.languages.removeAll(code);
    else
        m_project.languages.append(code);
    saveProject();
}

void AppModel::addCustomLanguage(const QString &text)
{
    const ProjectChange change(*this);
    const QString code = text.trimmed();
    if (code.isEmpty() || m_project.languages.contains(code))
        return;
    m_project.languages.append(code); // written as typed: no case change, no catalogue check
    saveProject();
}
