#include "support/CoriOccupati.h"

bool CoriOccupati::imposta(bool occupati)
{
    if (!occupati) {
        for (auto &p : m_cicli) {
            p->kill();
            p->waitForFinished(5000);
        }
        m_cicli.clear();
        return true;
    }
    while (m_cicli.size() < 2) {
        auto p = std::make_unique<QProcess>();
        p->start(QStringLiteral("sh"), {QStringLiteral("-c"), QStringLiteral("while :; do :; done")});
        if (!p->waitForStarted(5000))
            return false;
        m_cicli.push_back(std::move(p));
    }
    return true;
}
