#include "host/script/err_object.h"

#include "automation/describe.h"
#include "host/script/script_error.h"

namespace refhost::script {

const qmevents::Members& ErrObject::members() const
{
    using qmevents::arg;
    using qmevents::optional;
    static const qmevents::Members table =
        qmevents::describe<ErrObject>("The failure that the script stepped over.")
            .property("Number", &ErrObject::Number, "Its number; 0 for none.")
            .asDefault()
            .property("Source", &ErrObject::Source, "Where it comes from.")
            .property("Description", &ErrObject::Description, "What went wrong.")
            .method("Clear", &ErrObject::Clear, "Forgets it.")
            .method("Raise", &ErrObject::Raise,
                    {arg("Number"), optional("Source"), optional("Description")},
                    "Fails with this number.");
    return table;
}

void ErrObject::set(const qmevents::Error& error)
{
    Number = error.number();
    Source = error.source();
    Description = error.description();
}

void ErrObject::Clear()
{
    Number = 0;
    Source.clear();
    Description.clear();
}

void ErrObject::Raise(std::int32_t number, const std::optional<std::string>& source,
                      const std::optional<std::string>& description)
{
    if (number == 0) throw scriptError(qmevents::ErrorNumber::invalidCall);
    throw qmevents::Error(number, source.value_or("Script"), description.value_or(textOf(number)));
}

} // namespace refhost::script
