#include "partners/print.h"

#include "db/recordset.h"
#include "forms/datacontrol.h"
#include "print/pagedlist.h"
#include "print/pageform.h"

namespace partners {

namespace {
// Six slots a line; the phone and the fax share the last, a null printing as empty text.
std::vector<std::string> line(db::Recordset& r, const char* name, const char* postCode, const char* country,
                              const char* town, const char* street, const char* phone, const char* fax) {
    return {print::str(r.get(name)),   print::str(r.get(postCode)), print::str(r.get(country)),
            print::str(r.get(town)),   print::str(r.get(street)),
            print::str(r.get(phone)) + " / " + print::str(r.get(fax))};
}
}  // namespace

void registerPrintForms() {
    print::ListLayout partnerList;
    partnerList.caption = "Beszállítók, partnerek nyomtatása";
    partnerList.title = "BESZÁLLÍTÓK-PARTNEREK";
    partnerList.rows = ListLines;
    partnerList.columns = {{"BerNev", "NÉV:", 4.6},       {"BerIrszam", "IRSZ.:", 1.4}, {"BerOrszag", "ORSZ.:", 1.5},
                        {"BerSzekhely", "SZÉKHELY:", 2.7}, {"BerCim", "CÍM:", 4},       {"BerTelefonFax", "TELEFON / FAX:", 5}};
    partnerList.body = print::SmallFont;
    // the first page's heading differs from that of every later page, as settled
    partnerList.heading = [](int page) {
        return std::string(page == 1 ? "BESZÁLLÍTÓK-PARTNEREK" : "BESZÁLLÍTÓK-BERAKTÁROZÓK");
    };
    partnerList.pageText = print::lapszamText;
    print::registerListForm("BeszallitoNyomFormX", partnerList);

    print::ListLayout customers;
    customers.caption = "Címzettek-vásárlók listája";
    customers.title = "CÍMZETTEK-VÁSÁRLÓK";
    customers.rows = ListLines;
    customers.columns = {{"cimnev", "Név", 3.2},        {"cimirszam", "Irsz.", 0.8}, {"cimorszag", "Ország", 0.8},
                         {"cimszekhely", "Székhely", 1.8}, {"cimcim", "Cím", 2.6},     {"cimTelefon", "Telefon / Fax", 2.4}};
    customers.body = print::SmallFont;
    customers.pageText = print::lapszamText;
    print::registerListForm("CimzettNyomFormX", customers);
}

void printPartners(forms::DataControl* Beraktarozok) {
    print::PagedList::list("BeszallitoNyomFormX", Beraktarozok->Recordset(),
                           [](db::Recordset& r) {
                               return line(r, "BerNev", "BerIrszam", "BerOrszag", "BerSzekhely", "BerCim",
                                           "BerTelefon", "BerFax");
                           })
        .beepWhenEmpty()
        .endAt(print::PagedList::End::Last)
        .run();
}

void printCustomers(forms::DataControl* CimzettData) {
    print::PagedList::list("CimzettNyomFormX", CimzettData->Recordset(),
                           [](db::Recordset& r) {
                               return line(r, "cimnev", "cimirszam", "cimorszag", "cimszekhely", "cimcim",
                                           "cimTelefon", "cimFax");
                           })
        .beepWhenEmpty()
        .endAt(print::PagedList::End::Last)
        .run();
}

}  // namespace partners
