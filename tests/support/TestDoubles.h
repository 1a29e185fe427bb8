#pragma once

#include "core/AppContext.h"
#include "platform/Clock.h"
#include "platform/ErrorReport.h"
#include "platform/MessageBoxes.h"
#include "platform/Notifications.h"
#include "platform/RandomSource.h"
#include "platform/printing/RecordingPrinter.h"

#include <QDateTime>
#include <QList>
#include <QString>
#include <deque>
#include <memory>

// A clock that stands still until the test moves it.
class PinnedClock final : public Clock
{
public:
    explicit PinnedClock(QDateTime at = QDateTime(QDate(2026, 11, 16), QTime(10, 0, 0))) : m_now(at)
    {
    }
    QDateTime now() const override { return m_now; }
    void set(const QDateTime &at) { m_now = at; }
    void setSecondsSinceMidnight(double seconds);
    void advance(double seconds);

private:
    QDateTime m_now;
};

// Draws the test scripted, then (when the script runs out) seeded draws. It
// counts re-seeds so tests can check how often the clock was mixed in.
class ScriptedRandom final : public RandomSource
{
public:
    void script(std::initializer_list<double> draws) { m_script.insert(m_script.end(), draws); }
    double next() override;
    void reseed(float seed) override;

    int reseeds = 0;
    QList<float> seeds;
    int draws = 0;
    std::size_t scriptLeft() const { return m_script.size(); }

private:
    std::deque<double> m_script;
    MixingRandom m_fallback;
};

// Records every run-time error that reaches the general error report.
class RecordingErrorReport final : public ErrorReport
{
public:
    void report(const RuntimeError &error) override { errors.append(error.code()); }
    QList<RuntimeError::Code> errors;
};

// Records every message box and answers with a preset answer.
class RecordingMessageBoxes final : public MessageBoxes
{
public:
    struct Box
    {
        QString text;
        Buttons buttons;
        Icon icon;
        QString title;
    };
    Answer show(const QString &text, Buttons buttons, Icon icon, const QString &title) override
    {
        boxes.append({text, buttons, icon, title});
        return answer;
    }
    QList<Box> boxes;
    Answer answer = Ok;
};

// Records every notice instead of showing it.
class RecordingNotifications final : public Notifications
{
public:
    void notify(const QString &text) override { notices.append(text); }
    QStringList notices;
};

// Answers a folder question with a preset folder, and writes it down.
class ScriptedFolderChooser final : public FolderChooser
{
public:
    QString choose(const QString &title, const QString &) override
    {
        questions.append(title);
        return answer;
    }
    QString answer;
    QStringList questions;
};

// A fresh context wired with the doubles above; the raw pointers stay owned
// by the context.
struct TestContext
{
    TestContext();
    std::unique_ptr<AppContext> ctx;
    PinnedClock *clock;
    ScriptedRandom *random;
    RecordingErrorReport *errors;
    RecordingMessageBoxes *boxes;
    RecordingNotifications *notices;
    ScriptedFolderChooser *folders;
    // The only printer, and the current one.
    RecordingPrinter *printer;

    AppContext &operator*() { return *ctx; }
    AppContext *operator->() { return ctx.get(); }
};
