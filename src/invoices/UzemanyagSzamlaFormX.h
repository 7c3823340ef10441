// The register of incoming fuel invoices (SZAMLA in Kerova.dsb). An invoice row is a self-contained
// copy: a double click in the seller grid copies the partner's first thirteen columns into the
// row's positions 0-12, one in the vehicle grid the vehicle's first seventeen into 13-29, by
// position. The form computes nothing; the trip form opens it to fetch a net unit price, which
// "Adatátadás" leaves in Globals::FuelPriceTransfer.
#pragma once

#include <string>

#include "forms/recordform.h"

class QAction;
class QDateEdit;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace forms {
class DBGrid;
}

namespace invoices {

class UzemanyagSzamlaFormX : public forms::RecordForm {
public:
    static constexpr const char* Name = "UzemanyagSzamlaFormX";
    UzemanyagSzamlaFormX();
    void exitHandler() override;

    forms::DataControl* SzamlaData;
    forms::DataControl* BeraktarData;
    forms::DataControl* JarmData;
    QGroupBox* Frame1;
    QDateEdit* DTPicker1;
    QLineEdit *Text1, *Text2, *Text3, *Text4, *Text5, *Text6, *Text7, *Text8, *Text9, *Text10;
    QPushButton *Command1, *Command2, *Command3;
    QLabel* Label1;
    forms::DBGrid *DBGrid1, *DBGrid2, *DBGrid3;
    QAction *UjSzamla, *Torles, *AtadasS, *SzNyom, *SzamlHelp, *Kilepes;

    void UjSzamla_Click();
    void Torles_Click();
    void AtadasS_Click();
    void SzNyom_Click();
    void SzamlHelp_Click();
    void Kilepes_Click();
    void Command1_Click();
    void Command2_Click();
    void Command3_Click();
    void Label1_Click();
    void DBGrid1_DblClick();
    void DBGrid2_DblClick();

protected:
    void Form_Activate() override;

private:
    // Copies fields [0, count) of the current row of `from` into fields [first, first + count) of
    // the current invoice row, after the question; each field on its own.
    void copyInto(forms::DataControl* from, int first, int count);
    // "[field]" ascending, the same again descending.
    void sortBy(forms::DataControl* dc, forms::DBGrid* grid, int column);
    // FindNext of a like-pattern over a side source; no match: the message, then the first row.
    void searchOnward(forms::DataControl* dc, const std::string& column, const std::string& prompt,
                      const std::string& title, const std::string& notFound, const std::string& notFoundTitle);
    void showFrame();
    void noRowMessage();
};

}  // namespace invoices
