// The printing module's forms, registered with the forms runtime by name.
#pragma once
namespace print {
void registerForms();
}
