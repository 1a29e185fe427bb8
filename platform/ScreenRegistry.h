#pragma once

#include <QList>
#include <QObject>
#include <functional>
#include <typeindex>
#include <vector>

class Form;

// The collection of loaded screens. Referring to a screen that is not loaded
// loads it: the screen is created, marked loaded, and only then its load
// handler runs, so a reference made while it loads finds it instead of loading
// it twice. Unloading removes it; the next reference loads a fresh one.
class ScreenRegistry : public QObject
{
    Q_OBJECT

public:
    ScreenRegistry() = default;
    ~ScreenRegistry() override;

    // The loaded screen of type T, loading it with `make` if needed.
    template <class T, class Factory> T &get(Factory make)
    {
        if (T *loaded = find<T>())
            return *loaded;
        T *screen = make();
        add(std::type_index(typeid(T)), screen);
        load(screen);
        return *screen;
    }

    template <class T> T *find() const
    {
        return static_cast<T *>(lookup(std::type_index(typeid(T))));
    }

    template <class T> bool isLoaded() const { return find<T>() != nullptr; }

    // The loaded screens, in the order they were loaded.
    QList<Form *> loaded() const;

    // Unloads every loaded screen, one after the other, in loading order.
    void unloadAll();

    // Called by a screen that is being unloaded.
    void remove(Form *screen);

signals:
    // The last loaded screen went away: the program has nothing left to show.
    void empty();

private:
    void add(std::type_index type, Form *screen);
    void load(Form *screen);
    Form *lookup(std::type_index type) const;

    struct Entry
    {
        std::type_index type;
        Form *screen;
    };
    std::vector<Entry> m_entries;
};
