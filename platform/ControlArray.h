#pragma once

#include "platform/RuntimeError.h"

#include <QString>
#include <functional>
#include <map>

// A control array: members by the design's indices (Option1(0..2),
// LblOp(1..20)). A missing index is the forms runtime's run-time error.
template <class T> class ControlArray
{
public:
    ControlArray() = default;
    explicit ControlArray(const QString &name) : m_name(name) {}

    const QString &name() const { return m_name; }
    void add(int index, T *control) { m_items[index] = control; }

    T &operator()(int index) const { return at(index); }
    T &operator[](int index) const { return at(index); }
    T &at(int index) const
    {
        auto it = m_items.find(index);
        if (it == m_items.end() || !it->second)
            throw RuntimeError(RuntimeError::ControlArrayElementMissing,
                               m_name + QStringLiteral("(") + QString::number(index) +
                                   QStringLiteral(")"));
        return *it->second;
    }
    bool contains(int index) const { return m_items.count(index) != 0; }

    int Count() const { return int(m_items.size()); }
    int LBound() const { return m_items.empty() ? 0 : m_items.begin()->first; }
    int UBound() const { return m_items.empty() ? -1 : m_items.rbegin()->first; }

    // Every member raises the handler with its own index.
    void onClick(std::function<void(int)> h) const
    {
        for (auto &[i, c] : m_items)
            c->Click = [h, i = i] { h(i); };
    }
    void onGotFocus(std::function<void(int)> h) const
    {
        for (auto &[i, c] : m_items)
            c->GotFocus = [h, i = i] { h(i); };
    }
    void onLostFocus(std::function<void(int)> h) const
    {
        for (auto &[i, c] : m_items)
            c->LostFocus = [h, i = i] { h(i); };
    }
    void onKeyDown(std::function<void(int, int &, int)> h) const
    {
        for (auto &[i, c] : m_items)
            c->KeyDown = [h, i = i](int &k, int s) { h(i, k, s); };
    }
    void onKeyPress(std::function<void(int, int &)> h) const
    {
        for (auto &[i, c] : m_items)
            c->KeyPress = [h, i = i](int &k) { h(i, k); };
    }
    void onKeyUp(std::function<void(int, int &, int)> h) const
    {
        for (auto &[i, c] : m_items)
            c->KeyUp = [h, i = i](int &k, int s) { h(i, k, s); };
    }
    void onMouseDown(std::function<void(int, int, int, double, double)> h) const
    {
        for (auto &[i, c] : m_items)
            c->MouseDown = [h, i = i](int b, int s, double x, double y) { h(i, b, s, x, y); };
    }
    void onMouseUp(std::function<void(int, int, int, double, double)> h) const
    {
        for (auto &[i, c] : m_items)
            c->MouseUp = [h, i = i](int b, int s, double x, double y) { h(i, b, s, x, y); };
    }

    auto begin() const { return m_items.begin(); }
    auto end() const { return m_items.end(); }

private:
    QString m_name;
    std::map<int, T *> m_items;
};
