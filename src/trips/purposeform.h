// MegnevezesTorzsFormX, "Megnevezés (áru, szolgáltatás stb.) adatai törzs - Kerova": the trip
// purposes on MegnevezesTorzs, which fill the purpose list of the trip form.
#pragma once

#include "trips/smallmaster.h"

namespace trips {

class MegnevezesTorzsFormX : public SmallMasterForm {
    Q_OBJECT
public:
    static constexpr const char* Name = "MegnevezesTorzsFormX";
    static constexpr const char* Title = "Megnevezés (áru, szolgáltatás stb.) adatai törzs - Kerova";
    static constexpr const char* Source = "select * from MegnevezesTorzs order by Megnevezés";

    MegnevezesTorzsFormX();
    void UjAdat_Click() override;

protected:
    void Form_Activate() override;
};

}  // namespace trips
