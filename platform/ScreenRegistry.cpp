#include "platform/ScreenRegistry.h"

#include "platform/Form.h"

ScreenRegistry::~ScreenRegistry()
{
    // Screens still loaded when the run ends go without their unload handlers.
    const auto entries = m_entries;
    m_entries.clear();
    for (const Entry &e : entries)
        delete e.screen;
}

QList<Form *> ScreenRegistry::loaded() const
{
    QList<Form *> screens;
    for (const Entry &e : m_entries)
        screens.append(e.screen);
    return screens;
}

void ScreenRegistry::unloadAll()
{
    // A copy: unloading changes the collection, and an unload handler may
    // start a walk of its own.
    for (Form *screen : loaded())
        screen->Unload();
}

void ScreenRegistry::add(std::type_index type, Form *screen)
{
    m_entries.push_back({type, screen});
}

void ScreenRegistry::load(Form *screen)
{
    screen->load();
}

Form *ScreenRegistry::lookup(std::type_index type) const
{
    for (const Entry &e : m_entries)
        if (e.type == type)
            return e.screen;
    return nullptr;
}

void ScreenRegistry::remove(Form *screen)
{
    const auto before = m_entries.size();
    std::erase_if(m_entries, [screen](const Entry &e) { return e.screen == screen; });
    if (before != m_entries.size() && m_entries.empty())
        emit empty();
}
