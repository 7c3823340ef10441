// The partners module's forms, registered with the forms runtime by name.
#pragma once
namespace partners {
void registerForms();
}
