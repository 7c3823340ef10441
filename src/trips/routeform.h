// GkUtakTavolsagaTorzsFormX, "Utak távolsága törzs - Kerova": the route distance master on
// UtakTavolsag. One-directional rows of from, to and distance with the two country codes; the
// return row, the searches, the delete, the save that finds its row again, the country picker,
// the hand-over of a route to the caller and the page-by-page list on UttavNyomFormX.
#pragma once

#include "forms/recordform.h"

class QAction;
class QLabel;
class QLineEdit;
class QPushButton;

namespace trips {

class GkUtakTavolsagaTorzsFormX : public forms::RecordForm {
    Q_OBJECT
public:
    static constexpr const char* Name = "GkUtakTavolsagaTorzsFormX";
    static constexpr const char* Title = "Utak távolsága törzs - Kerova";
    // The table itself in its stored order: no statement is given for this source.
    static constexpr const char* Source = "UtakTavolsag";
    static constexpr const char* DataCaption = "Távolságok törzs - Mozgás nyilakkal";

    static constexpr const char* FromPrompt = "Honnan:";
    static constexpr const char* FromTitle = "Keresés - honnan";
    static constexpr const char* ToPrompt = "Hova:";
    static constexpr const char* ToTitle = "Keresés - hova";
    static constexpr const char* NoSuchPlace = "Nincs ilyen helység!";
    static constexpr const char* DeleteText = "Az adatsor VÉGLEGESEN törölhető?";
    static constexpr const char* DeleteTitle = "FIGYELEM! Aktuális adat VISSZAVONHATATLAN törlése!";
    static constexpr const char* SaveMiss1 = "Nincs ilyen azonosító! Lehet, hogy hibás az adatbázis!";
    static constexpr const char* SaveMiss2 = "Nincs ilyen azonosító! Álljon rá egy másik adatra a táblázatban!";

    GkUtakTavolsagaTorzsFormX();

    forms::DataControl* UtTavTorzsData;
    QLineEdit *Text1, *Text2, *Text3, *Text4, *Text5;
    QLabel* Label4;
    forms::DBGrid* DBGrid1;
    QPushButton *Command1, *Command2, *Command3, *Command4, *Command5, *Command6, *Command7, *Command8,
        *Command9, *Command10, *Command11, *Command12;
    QAction *OKMent, *UtTorzsUj, *UjVissza, *UtTorzsTorol, *GTKeresHonnan, *GTKeresHova, *GTNyom, *AdatAtad,
        *Segedlet, *Kilepes;

    void exitHandler() override { Kilepes_Click(); }

    void OKMent_Click();
    void UtTorzsUj_Click();
    void UjVissza_Click();
    void GTKeresHonnan_Click();
    void GTKeresHova_Click();
    void UtTorzsTorol_Click();
    void GTNyom_Click();
    void Command2_Click();
    void Command3_Click();
    void Segedlet_Click();
    void Kilepes_Click();
    void AdatAtad_Click();
    void DBGrid1_HeadClick(int column);

protected:
    void Form_Activate() override;

private:
    void build();
    void saveMiss(const char* text);
};

}  // namespace trips
