// UzemeltetokForm: the single record of the operator whose fleet the register keeps (table
// Bettorzs). The name is mandatory: leaving with an empty name deletes the row and ends the program.
// The main form loads it unshown at every activation to read the operator's name.
#pragma once

#include "forms/recordform.h"

class QAction;
class QLabel;
class QLineEdit;
class QPushButton;

namespace app {

class UzemeltetokForm : public forms::RecordForm {
    Q_OBJECT
public:
    UzemeltetokForm();

    static constexpr const char* LogText = "Üzemeltető adatai";
    static constexpr const char* EmptyNameText =
        "Hiányos kitöltés! Az adat törlődik! A program bejegyzett üzemeltető nélkül nem működik!";
    static constexpr const char* EmptyNameTitle = "FIGYELEM! SÚLYOS HIBA!";

    forms::DataControl *Betarol, *Regisztralas;
    QLineEdit *Text2, *Text3, *Text4, *Text5, *Text6, *Text7, *Text12, *Text13, *Text14, *Text20, *Text22, *Text24;
    QLabel *Label1, *Folder;
    QPushButton* Command1;
    QAction* Kilepes;

    void exitHandler() override { Kilepes_Click(); }

protected:
    void Form_Activate() override;

private:
    void Kilepes_Click();
};

}  // namespace app
