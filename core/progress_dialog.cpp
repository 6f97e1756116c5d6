#include "core/progress_dialog.h"

#include "core/context.h"
#include "core/host.h"

namespace qmevents {
namespace {

Ref<Object> newProgressDialog()
{
    const auto dialogs = getObject(Context::current().root(), "Dialogs");
    return toObject(call(dialogs, "NewDialog", "progressbar"));
}

} // namespace

ProgressDialog::ProgressDialog(const std::string& title, const std::string& heading,
                               const std::string& description)
{
    const Shell shell = host().shell();
    const auto dialog = newProgressDialog();
    put(dialog, "Title", title);
    put(dialog, "Heading", heading);
    put(dialog, "Description", description);
    shell.dialog().setWaitForClose(false);
    try {
        call(dialog, "Create");
    } catch (...) {
        shell.dialog().setWaitForClose(true); // it was meant for this dialog alone
        throw;
    }
    // Showing it took the values along.
    shell.setDialogValue("heading", heading);
    shell.setDialogValue("description", description);
}

ProgressDialog::~ProgressDialog()
{
    try {
        const DialogEngine engine = host().shell().dialog();
        if (!isCancelled()) engine.close({});
        engine.clearClipboard();
    } catch (const Error&) {
        // The work is what counts; a dialog that cannot be closed is left to the user.
    }
}

void ProgressDialog::show(const std::string& description, std::int64_t done,
                          std::int64_t total) const
{
    const Host app = host();
    if (isCancelled()) return;
    app.shell().setDialogValue("description", description);
    app.shell().setDialogValue("done", static_cast<double>(done));
    app.shell().setDialogValue("total", static_cast<double>(total));
    app.yield();
}

bool ProgressDialog::isCancelled() const
{
    // An open dialog has no result yet.
    return !host().shell().dialog().returnValue().isEmpty();
}

} // namespace qmevents
