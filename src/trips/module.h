// The trips module's forms, registered with the forms runtime by name.
#pragma once
namespace trips {
void registerForms();
}
