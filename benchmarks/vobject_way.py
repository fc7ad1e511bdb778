#!/usr/bin/env python3
"""Prints the name and each fax number of every card of a file, as a program does that reads cards with python3-vobject.

usage: vobject_way.py FILE
"""
import sys

import vobject


def main():
    with open(sys.argv[1], encoding="utf-8", newline="") as file:
        for card in vobject.readComponents(file):
            for telephone in card.contents.get("tel", []):
                if "FAX" in (kind.upper() for kind in telephone.params.get("TYPE", [])):
                    print(card.fn.value, telephone.value)


if __name__ == "__main__":
    main()
