#pragma once

#include "platform/Form.h"

class AppContext;

// Who made the program and how to reach them. Modal; closes with its button
// or the close box.
class frmAutore : public Form
{
    Q_OBJECT

public:
    explicit frmAutore(AppContext &ctx);

private:
    void Command1_Click();
};
