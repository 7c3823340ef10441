// KerovaForm: the pocket calculator of a journey's fuel cost, with no table behind it. Each input is
// read by Val and cut to a 16-bit whole number (CInt) before the arithmetic, as the program always
// did; a value above 32767 overflows into the runtime's error box.
#pragma once

#include "forms/recordform.h"

class QLabel;
class QLineEdit;
class QPushButton;

namespace app {

class KerovaForm : public forms::RecordForm {
    Q_OBJECT
public:
    KerovaForm();

    QLabel *Label1, *Label2, *Label3, *Label4, *Label5;
    QLineEdit *TxtTavolsag, *TxtFogyasztas, *TxtBenzinar, *TxtEredmeny;
    QPushButton* Kilepes;

    void exitHandler() override { unloadUnguarded(); }

private:
    void Recompute();
};

}  // namespace app
