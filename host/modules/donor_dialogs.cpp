#include "host/modules/donor_dialogs.h"

#include "automation/describe.h"
#include "automation/text.h"

namespace refhost {

using qmevents::arg;
using qmevents::describe;
using qmevents::makeRef;

namespace {

constexpr const char* chooserKey = "getdonor";
constexpr int chooserHeight = 560;
constexpr int chooserWidth = 600;

} // namespace

const Members& GetDonorDialog::members() const
{
    using Self = GetDonorDialog;
    static const Members table =
        describe<Self>("Chooses a donor.")
            .property("Title", &Self::Title, "The title of the window.")
            .property("Heading", &Self::Heading, "The heading of the page.")
            .property("Description", &Self::Description, "What the page asks for.")
            .property("AllowNew", &Self::AllowNew, "Whether a new donor may be taken down.")
            .property("ShowAll", &Self::ShowAll,
                      "Whether donors are listed before anything was typed.")
            .property("AllowAdvanced", &Self::AllowAdvanced,
                      "Whether donors may be found by other things than their names.")
            .readOnly("DonorId", &Self::DonorId, "Who was chosen; 0 before.")
            .method("Create", &Self::Create, "Shows the dialog; True when a donor was chosen.");
    return table;
}

bool GetDonorDialog::Create()
{
    DialogEngine& engine = context_->shell()->dialogEngine();
    // A handler of its own gives the dialog values of its own, over a dialog that is open.
    engine.setHandler(Ref<Object>(this));
    engine.setValue("title", Value(Title));
    engine.setValue("heading", Value(Heading));
    engine.setValue("description", Value(Description));
    engine.setValue("allownew", Value(AllowNew));
    engine.setValue("showall", Value(ShowAll));
    engine.setValue("allowadvanced", Value(AllowAdvanced));
    engine.show("donor", chooserKey, chooserHeight, chooserWidth);
    const Value confirmed = engine.ReturnValue();
    const Value chosen = engine.value("donorid");
    engine.ClearClipboard();
    if (confirmed.isEmpty() || !qmevents::toBool(confirmed) || chosen.isEmpty()) return false;
    DonorId = qmevents::toInt32(chosen);
    return DonorId != 0;
}

const Members& DonorDialogs::members() const
{
    static const Members table = describe<DonorDialogs>("The donor module's dialogs.")
                                     .method("NewDialog", &DonorDialogs::NewDialog, {arg("Key")},
                                             "A new dialog by its key.");
    return table;
}

Ref<Object> DonorDialogs::NewDialog(const std::string& key) const
{
    if (qmevents::text::sameName(qmevents::text::trim(key), chooserKey)) {
        return makeRef<GetDonorDialog>(context_);
    }
    throw qmevents::Error::with(qmevents::ErrorNumber::invalidCall,
                                "the donor module has no dialog called \"" + key + "\"");
}

} // namespace refhost
