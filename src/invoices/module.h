// The invoices module's forms, registered with the forms runtime by name.
#pragma once
namespace invoices {
void registerForms();
}
