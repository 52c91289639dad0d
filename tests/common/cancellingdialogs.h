#pragma once

#include <VantryHTMLEditor/EditorDialogs.h>

// A user who cancels every dialog; test doubles override the dialogs they answer.
class CancellingDialogs : public Vantry::EditorDialogs
{
public:
    bool insertTable(Vantry::InsertTableValues &values) override { return cancel(values); }
    bool tableProperties(Vantry::TablePropertiesValues &values) override { return cancel(values); }
    bool cellProperties(Vantry::CellPropertiesValues &values) override { return cancel(values); }
    bool insertImage(Vantry::ImageDialogValues &values) override { return cancel(values); }
    bool linkProperties(Vantry::LinkPropertiesValues &values) override { return cancel(values); }
    bool pageProperties(Vantry::PagePropertiesValues &values) override { return cancel(values); }
    bool selectStyle(Vantry::SelectStyleValues &values) override { return cancel(values); }
    bool flashProperties(Vantry::FlashPropertiesValues &values) override { return cancel(values); }
    bool elementProperties(Vantry::ElementPropertiesValues &values) override
    {
        return cancel(values);
    }
    bool imageUpload(Vantry::ImageUploadValues &values) override { return cancel(values); }
    SpellingAnswer spellingWord(const SpellingQuestion &) override { return {}; }
    void spellingDone() override { }

private:
    template <typename Values> static bool cancel(Values &values)
    {
        values.Cancel = true;
        return false;
    }
};
