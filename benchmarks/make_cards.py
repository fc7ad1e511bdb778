#!/usr/bin/env python3
"""Writes an address file of many cards, the same for the same number: make_cards.py COUNT FILE.

Of the cards 60 % have one fax number, 25 % two, 10 % none and 5 % are groups; they are about 300 bytes long, as exporters
write them: names and organisations, voice numbers, e-mail and postal addresses, a note on every fifth.
"""
import random
import sys

GIVEN = "Anna Ben Clara David Eva Frank Greta Hans Ida José Karin Lars Mia Noël Olga Paul Rosa Sören Tina Urs".split()
FAMILY = "Adler Berg Costa Dubois Eklund Fischer García Huber Ivanov Jensen Keller López Müller Novák Olsen Petrov".split()
COMPANIES = "Alpine Baltic Castle Delta Elbe Fjord Globe Harbour Island Juniper".split()
TRADES = "Printing Shipping Tools Glass Foods Paper Motors Textiles".split()
DEPARTMENTS = ["Sales", "Purchasing", "Accounts", "Research", "Customer Care", "Legal"]


def write_card(out, number, choice):
    given, family = choice.choice(GIVEN), choice.choice(FAMILY)
    lines = ["BEGIN:VCARD", "VERSION:3.0", f"UID:card-{number}"]
    if number % 20 == 19:
        lines += [f"FN:Group {number}", "X-ADDRESSBOOKSERVER-KIND:group"]
        lines += [f"X-ADDRESSBOOKSERVER-MEMBER:urn:uuid:card-{number - back}" for back in (3, 7, 11)]
    else:
        lines += [
            f"N:{family};{given};;;",
            f"FN:{given} {family} {number}",
            f"ORG:{choice.choice(COMPANIES)} {choice.choice(TRADES)} Ltd;{choice.choice(DEPARTMENTS)}",
            f"EMAIL;TYPE=INTERNET:{number}@example.com",
            f"TEL;TYPE=WORK,VOICE:+1 555 {number:07}",
            f"ADR;TYPE=WORK:;;{number % 200} Harbour Road;Springfield;;{number % 100000:05};Nowhere",
        ]
        share = number % 20
        if share >= 2:
            lines.append(f"TEL;TYPE=WORK,FAX:+1 556 {number:07}")
        if share >= 14:
            lines.append(f"TEL;TYPE=HOME,FAX:+1 557 {number:07}")
        if number % 5 == 0:
            lines.append("NOTE:Prefers faxes in the morning, not calls")
    lines.append("END:VCARD")
    out.write("\r\n".join(lines) + "\r\n")


def main():
    count, path = int(sys.argv[1]), sys.argv[2]
    choice = random.Random(1)
    with open(path, "w", encoding="utf-8", newline="") as out:
        for number in range(count):
            write_card(out, number, choice)


if __name__ == "__main__":
    main()
