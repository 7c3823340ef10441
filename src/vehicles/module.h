// The vehicle module's forms, registered with the forms runtime by name.
#pragma once
namespace vehicles {
void registerForms();
}
