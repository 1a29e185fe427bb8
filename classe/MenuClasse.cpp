#include "classe/MenuClasse.h"

#include "classe/FrmCopieClasse.h"
#include "classe/FrmRifaiCodice.h"
#include "core/AppContext.h"

void MenuClasse::Installa(AppContext &ctx)
{
    ctx.setFabbricaSchedeClasse([](AppContext &c) -> std::unique_ptr<SchedeClasse> {
        return std::make_unique<MenuClasse>(c);
    });
}

void MenuClasse::CopiePerLaClasse()
{
    FrmCopieClasse &f = m_ctx.form<FrmCopieClasse>();
    // Modal without waiting: while a set is printed nothing else may print.
    if (!f.isVisible())
        f.setWindowModality(Qt::ApplicationModal);
    f.Show();
}

void MenuClasse::RifaiDaCodice()
{
    m_ctx.form<FrmRifaiCodice>().Show();
}
