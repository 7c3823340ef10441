#include "db/error.h"

namespace db {

DaoError daoError(const jet::JetError& e) {
    using K = jet::ErrorKind;
    const std::string why = e.what();
    switch (e.kind()) {
    case K::Io: return {dao::DiskError, "Disk or network error. (" + why + ")"};
    case K::NotJet4:
    case K::Corrupt: return {dao::UnrecognizedFormat, "Unrecognized database format. (" + why + ")"};
    case K::Encrypted: return {dao::NotValidPassword, "Not a valid password. (" + why + ")"};
    case K::NoSuchTable:
        return {dao::UnknownTable,
                "The Microsoft Jet database engine cannot find the input table or query. (" + why + ")"};
    case K::NoSuchColumn: return {dao::UnknownField, "Item not found in this collection. (" + why + ")"};
    case K::NoSuchIndex: return {dao::NotAnIndex, "Not an index in this table. (" + why + ")"};
    case K::NoSuchRow: return {dao::RecordDeleted, "Record is deleted."};
    case K::Duplicate:
        return {dao::DuplicateKey,
                "The changes you requested to the table were not successful because they would create "
                "duplicate values in the index, primary key, or relationship."};
    case K::Locked: return {dao::RecordLocked, "Could not update; currently locked. (" + why + ")"};
    case K::ReadOnly: return {dao::NotUpdatable, "Cannot update. Database or object is read-only."};
    case K::Invalid: return {dao::DataTypeConversion, "Data type conversion error. (" + why + ")"};
    case K::SortOrder:
    case K::Unsupported: return {dao::NotSupported, "Operation is not supported. (" + why + ")"};
    }
    return {dao::DiskError, why};
}

}  // namespace db
