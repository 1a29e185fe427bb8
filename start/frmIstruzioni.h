#pragma once

#include "platform/Form.h"

class AppContext;

// How the program is used. Modal; its sentence is set each time it loads.
class frmIstruzioni : public Form
{
    Q_OBJECT

public:
    explicit frmIstruzioni(AppContext &ctx);

protected:
    void Form_Load() override;

private:
    void Command1_Click();
};
