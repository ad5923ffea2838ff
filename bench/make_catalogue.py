#!/usr/bin/env python3
"""Writes the benchmark catalogue: N messages in English and German.

Outputs, in the directory given:
  catalogue.mc   the message file (about 12 MB for 50,000 messages)
  tqbench.po     the same German texts for GNU gettext, keyed by the English text
  catalogue.tsv  per message: identifier, insert count, English and German
                 texts as printf formats (for gettext and the snprintf floor)
Insert n of a text is %1 (a string), %2!d! (an int) or %3 (a string); the
printf forms are %s, %d and %s in the same order.
"""
import os
import random
import sys

ENGLISH = ("the file could not be opened because another process holds it open "
           "service driver volume network adapter configuration registry value "
           "was not found please check your settings and try again later "
           "request timed out while waiting for the remote server to respond "
           "access denied user account backup completed successfully").split()
GERMAN = ("die Datei konnte nicht geoeffnet werden weil ein anderer Prozess sie "
          "offen haelt Dienst Treiber Datentraeger Netzwerkadapter Konfiguration "
          "Registrierungswert wurde nicht gefunden bitte pruefen Sie Ihre "
          "Einstellungen und versuchen Sie es spaeter erneut Zeitueberschreitung "
          "Zugriff verweigert Benutzerkonto Sicherung erfolgreich abgeschlossen").split()
INSERTS_MC = ["%1", "%2!d!", "%3"]
INSERTS_PRINTF = ["%s", "%d", "%s"]
SEVERITIES = ["Success", "Informational", "Warning", "Error"]


def sentence(rng, words, code, length):
    text = [f"M{code}:"]
    while sum(len(w) + 1 for w in text) < length:
        text.append(rng.choice(words))
    return text


def with_inserts(rng, words, count, table):
    """Places `count` inserts, in order, at random word positions."""
    positions = sorted(rng.sample(range(1, len(words) + 1), count))
    out = list(words)
    for n, position in reversed(list(enumerate(positions))):
        out.insert(position, table[n])
    return " ".join(out)


def main():
    outdir = sys.argv[1]
    count = int(sys.argv[2]) if len(sys.argv) > 2 else 50000
    rng = random.Random(20261123)
    os.makedirs(outdir, exist_ok=True)
    with open(os.path.join(outdir, "catalogue.mc"), "w") as mc, \
         open(os.path.join(outdir, "tqbench.po"), "w") as po, \
         open(os.path.join(outdir, "catalogue.tsv"), "w") as tsv:
        mc.write("; generated benchmark catalogue\n"
                 "LanguageNames=(English=0x409:MSG00409)\n"
                 "LanguageNames=(German=0x407:MSG00407)\n\n")
        po.write('msgid ""\nmsgstr ""\n"Content-Type: text/plain; charset=UTF-8\\n"\n\n')
        for code in range(1, count + 1):
            severity = code % 4
            inserts = rng.randrange(4)
            en_words = sentence(rng, ENGLISH, code, rng.randrange(50, 92))
            de_words = sentence(rng, GERMAN, code, rng.randrange(50, 92))
            mc.write(f"MessageId=0x{code:x}\nSeverity={SEVERITIES[severity]}\n"
                     f"SymbolicName=MSG_{code:05d}\nLanguage=English\n"
                     f"{with_inserts(random.Random(code), en_words, inserts, INSERTS_MC)}\n.\n"
                     f"Language=German\n"
                     f"{with_inserts(random.Random(-code), de_words, inserts, INSERTS_MC)}\n.\n")
            en = with_inserts(random.Random(code), en_words, inserts, INSERTS_PRINTF)
            de = with_inserts(random.Random(-code), de_words, inserts, INSERTS_PRINTF)
            po.write(f'msgid "{en}"\nmsgstr "{de}"\n\n')
            identifier = (severity << 30) | code
            tsv.write(f"{identifier}\t{inserts}\t{en}\t{de}\n")


if __name__ == "__main__":
    main()
