// The workshop module's forms, registered with the forms runtime by name.
#pragma once
namespace workshop {
void registerForms();
}
