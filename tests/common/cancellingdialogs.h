#pragma once

#include <VantryHTMLEditor/EditorDialogs.h>

#include <functional>

// A user who answers each dialog that has an answer, after looking at what it shows, and
// cancels every other one. An answer may still cancel by setting Cancel.
class AnsweringDialogs : public Vantry::EditorDialogs
{
public:
    template <typename Values> using Answer = std::function<void(Values &)>;

    bool insertTable(Vantry::InsertTableValues &values) override { return run(insert, values); }
    bool tableProperties(Vantry::TablePropertiesValues &values) override
    {
        return run(table, values);
    }
    bool cellProperties(Vantry::CellPropertiesValues &values) override { return run(cell, values); }
    bool insertImage(Vantry::ImageDialogValues &values) override { return run(image, values); }
    bool linkProperties(Vantry::LinkPropertiesValues &values) override { return run(link, values); }
    bool pageProperties(Vantry::PagePropertiesValues &values) override { return run(page, values); }
    bool selectStyle(Vantry::SelectStyleValues &values) override { return run(style, values); }
    bool flashProperties(Vantry::FlashPropertiesValues &values) override
    {
        return run(flash, values);
    }
    bool elementProperties(Vantry::ElementPropertiesValues &values) override
    {
        return run(element, values);
    }
    bool imageUpload(Vantry::ImageUploadValues &values) override { return run(upload, values); }
    SpellingAnswer spellingWord(const SpellingQuestion &) override { return {}; }
    void spellingDone() override { }

    Answer<Vantry::InsertTableValues> insert;
    Answer<Vantry::TablePropertiesValues> table;
    Answer<Vantry::CellPropertiesValues> cell;
    Answer<Vantry::ImageDialogValues> image;
    Answer<Vantry::LinkPropertiesValues> link;
    Answer<Vantry::PagePropertiesValues> page;
    Answer<Vantry::SelectStyleValues> style;
    Answer<Vantry::FlashPropertiesValues> flash;
    Answer<Vantry::ElementPropertiesValues> element;
    Answer<Vantry::ImageUploadValues> upload;

private:
    template <typename Values> static bool run(const Answer<Values> &answer, Values &values)
    {
        values.Cancel = !answer;
        if (answer)
            answer(values);
        return !values.Cancel;
    }
};

// A user who cancels every dialog.
using CancellingDialogs = AnsweringDialogs;
