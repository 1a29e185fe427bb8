#include "support/TestDoubles.h"

#include "platform/printing/Printers.h"

void PinnedClock::setSecondsSinceMidnight(double seconds)
{
    m_now = QDateTime(m_now.date(), QTime(0, 0).addMSecs(qRound64(seconds * 1000)));
}

void PinnedClock::advance(double seconds)
{
    m_now = m_now.addMSecs(qRound64(seconds * 1000));
}

double ScriptedRandom::next()
{
    ++draws;
    if (m_script.empty())
        return m_fallback.next();
    const double r = m_script.front();
    m_script.pop_front();
    return r;
}

void ScriptedRandom::reseed(float seed)
{
    ++reseeds;
    seeds.append(seed);
    m_fallback.reseed(seed);
}

TestContext::TestContext() : ctx(std::make_unique<AppContext>())
{
    auto c = std::make_unique<PinnedClock>();
    clock = c.get();
    ctx->setClock(std::move(c));
    auto r = std::make_unique<ScriptedRandom>();
    random = r.get();
    ctx->setRandom(std::move(r));
    auto e = std::make_unique<RecordingErrorReport>();
    errors = e.get();
    ctx->setErrorReport(std::move(e));
    auto b = std::make_unique<RecordingMessageBoxes>();
    boxes = b.get();
    ctx->setMessageBoxes(std::move(b));
    auto n = std::make_unique<RecordingNotifications>();
    notices = n.get();
    ctx->setNotifications(std::move(n));
    auto f = std::make_unique<ScriptedFolderChooser>();
    folders = f.get();
    ctx->setFolderChooser(std::move(f));
    auto p = std::make_unique<RecordingPrinter>();
    printer = p.get();
    std::vector<std::unique_ptr<Printer>> printers;
    printers.push_back(std::move(p));
    ctx->setPrinters(std::make_unique<Printers>(std::move(printers)));
}
