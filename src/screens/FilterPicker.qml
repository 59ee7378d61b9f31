pragma ComponentBehavior: Bound

import QtQuick
import Quillmere.Presentation
import Quillmere.Screens

// Picks one choice of a filter. Its name is the filter's, its description the choice.
ChoicePicker {
    id: picker

    required property CaseFilter filter

    model: filter.choices
    textRole: "label"
    currentIndex: filter.index
    labelColor: currentIndex > 0 ? Ink.paper : Ink.dim
    popupWidth: Math.max(240, width)
    onChosen: index => filter.index = index
}
