// What is the same for a card of any format.
#include "cards/card_draft.h"

void CardDraft::Clear() {
    line = 0;
    isGroup = false;
    for (std::string* text : {&formattedName, &nameFromParts, &nickname, &company, &department, &note, &uid})
        text->clear();
    emails.Clear();
    telephones.Clear();
    members.Clear();
    categories.Clear();
}

std::string_view NameOf(const CardDraft& card) {
    for (const std::string* name : {&card.formattedName, &card.nameFromParts, &card.company, &card.nickname})
        if (!name->empty()) return *name;
    if (!card.emails.IsEmpty()) return card.emails.begin()->text;
    for (const Telephone& telephone : card.telephones)
        if (!telephone.number.empty()) return telephone.number;
    return {};
}
