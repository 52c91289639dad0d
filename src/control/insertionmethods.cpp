// The editor's insertion, image and spelling methods, kept out of the facade: each forwards
// to the executor, the image placement or the spelling check.
#include <VantryHTMLEditor/HTMLEditorComponent.h>

#include "control/htmleditorcomponent_p.h"

#include "commands/executor.h"
#include "control/imageplacement.h"
#include "text/spellingcheck.h"

namespace Vantry {

void HTMLEditorComponent::InsertImageNoPrompt(QString &psIMAGE_Width, QString &psIMAGE_Height,
    QString &psIMAGE_vspace, QString &psIMAGE_hspace, QString &psIMAGE_align,
    QString &psIMAGE_border, QString &psIMAGE_alt, QString &psIMAGE_src, QString &psIMAGE_Style)
{
    Commands::ImageArguments image{psIMAGE_Width, psIMAGE_Height, psIMAGE_vspace, psIMAGE_hspace,
        psIMAGE_align, psIMAGE_border, psIMAGE_alt, psIMAGE_src, psIMAGE_Style};
    d->executor->insertImageFromArguments(image);
    psIMAGE_Width = image.width;
    psIMAGE_Height = image.height;
    psIMAGE_src = image.src;
}

void HTMLEditorComponent::InsertTABLENoPrompt(QString &psTABLE_Width, QString &psTABLE_Height,
    QString &psTABLE_Rows, QString &psTABLE_Columns, QString &psTABLE_Align,
    QString &psTABLE_Valign, QString &psTABLE_BGImage, QString &psTABLE_BGColor,
    QString &psTABLE_Border, QString &psTABLE_CellSpacing, QString &psTABLE_CellPadding,
    QString &psTABLE_BorderColor, QString &psTABLE_Style)
{
    QString noClass;
    d->executor->insertTableFromArguments(
        {psTABLE_Width, psTABLE_Height, psTABLE_Rows, psTABLE_Columns, psTABLE_Align,
            psTABLE_Valign, psTABLE_BGImage, psTABLE_BGColor, psTABLE_Border, psTABLE_CellSpacing,
            psTABLE_CellPadding, psTABLE_BorderColor, psTABLE_Style, noClass},
        false);
}

void HTMLEditorComponent::InsertTABLENoPrompt2(QString &psTABLE_Width, QString &psTABLE_Height,
    QString &psTABLE_Rows, QString &psTABLE_Columns, QString &psTABLE_Align,
    QString &psTABLE_Valign, QString &psTABLE_BGImage, QString &psTABLE_BGColor,
    QString &psTABLE_Border, QString &psTABLE_CellSpacing, QString &psTABLE_CellPadding,
    QString &psTABLE_BorderColor, QString &psTABLE_Style, QString &psTABLE_Class)
{
    d->executor->insertTableFromArguments(
        {psTABLE_Width, psTABLE_Height, psTABLE_Rows, psTABLE_Columns, psTABLE_Align,
            psTABLE_Valign, psTABLE_BGImage, psTABLE_BGColor, psTABLE_Border, psTABLE_CellSpacing,
            psTABLE_CellPadding, psTABLE_BorderColor, psTABLE_Style, psTABLE_Class},
        true);
}

void HTMLEditorComponent::InsertImageNoPrompt(const QString &psIMAGE_Width,
    const QString &psIMAGE_Height, const QString &psIMAGE_vspace, const QString &psIMAGE_hspace,
    const QString &psIMAGE_align, const QString &psIMAGE_border, const QString &psIMAGE_alt,
    const QString &psIMAGE_src, const QString &psIMAGE_Style)
{
    Commands::ImageArguments image{psIMAGE_Width, psIMAGE_Height, psIMAGE_vspace, psIMAGE_hspace,
        psIMAGE_align, psIMAGE_border, psIMAGE_alt, psIMAGE_src, psIMAGE_Style};
    d->executor->insertImageFromArguments(image);
}

void HTMLEditorComponent::InsertTABLENoPrompt(const QString &psTABLE_Width,
    const QString &psTABLE_Height, const QString &psTABLE_Rows, const QString &psTABLE_Columns,
    const QString &psTABLE_Align, const QString &psTABLE_Valign, const QString &psTABLE_BGImage,
    const QString &psTABLE_BGColor, const QString &psTABLE_Border,
    const QString &psTABLE_CellSpacing, const QString &psTABLE_CellPadding,
    const QString &psTABLE_BorderColor, const QString &psTABLE_Style)
{
    d->executor->insertTableFromArguments(
        {psTABLE_Width, psTABLE_Height, psTABLE_Rows, psTABLE_Columns, psTABLE_Align,
            psTABLE_Valign, psTABLE_BGImage, psTABLE_BGColor, psTABLE_Border, psTABLE_CellSpacing,
            psTABLE_CellPadding, psTABLE_BorderColor, psTABLE_Style, QString()},
        false);
}

void HTMLEditorComponent::InsertTABLENoPrompt2(const QString &psTABLE_Width,
    const QString &psTABLE_Height, const QString &psTABLE_Rows, const QString &psTABLE_Columns,
    const QString &psTABLE_Align, const QString &psTABLE_Valign, const QString &psTABLE_BGImage,
    const QString &psTABLE_BGColor, const QString &psTABLE_Border,
    const QString &psTABLE_CellSpacing, const QString &psTABLE_CellPadding,
    const QString &psTABLE_BorderColor, const QString &psTABLE_Style, const QString &psTABLE_Class)
{
    d->executor->insertTableFromArguments(
        {psTABLE_Width, psTABLE_Height, psTABLE_Rows, psTABLE_Columns, psTABLE_Align,
            psTABLE_Valign, psTABLE_BGImage, psTABLE_BGColor, psTABLE_Border, psTABLE_CellSpacing,
            psTABLE_CellPadding, psTABLE_BorderColor, psTABLE_Style, psTABLE_Class},
        true);
}

bool HTMLEditorComponent::InsertTABLENoPrompt(const QVariantMap &arguments)
{
    return d->insertTableByName(arguments, false);
}

bool HTMLEditorComponent::InsertTABLENoPrompt2(const QVariantMap &arguments)
{
    return d->insertTableByName(arguments, true);
}

void HTMLEditorComponent::CopyImageFiles(const QString &ToLocation)
{
    d->images->CopyImageFiles(ToLocation);
}

void HTMLEditorComponent::ChangeImagePath(const QString &sPath)
{
    d->images->ChangeImagePath(sPath);
}

void HTMLEditorComponent::ChangeImageFromSelectedElement(
    const QString &sImagePath, const QString &sImageFileName)
{
    d->images->ChangeImageFromSelectedElement(sImagePath, sImageFileName);
}

void HTMLEditorComponent::RemoveImageFromSelectedElement()
{
    d->images->RemoveImageFromSelectedElement();
}

bool HTMLEditorComponent::FindSpellingError()
{
    return DesignViewActive() && d->spelling->findSpellingError();
}

bool HTMLEditorComponent::FindDoubledWord()
{
    return DesignViewActive() && d->spelling->findDoubledWord();
}

} // namespace Vantry
