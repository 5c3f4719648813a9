<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE" sourcelanguage="en">
<context>
    <name>ColumnHeader</name>
    <message>
        <source>no final line end</source>
        <translation>letzte Zeile ohne Zeilenende</translation>
    </message>
    <message>
        <source>byte-order mark</source>
        <translation>Byte-Reihenfolge-Marke</translation>
    </message>
    <message>
        <source>no byte-order mark</source>
        <translation>ohne Byte-Reihenfolge-Marke</translation>
    </message>
    <message>
        <source>empty</source>
        <translation>leer</translation>
    </message>
</context>
<context>
    <name>CompareView</name>
    <message>
        <source>Not compared</source>
        <translation>Nicht verglichen</translation>
    </message>
    <message>
        <source>Comparing…</source>
        <translation>Vergleiche …</translation>
    </message>
    <message>
        <source>The comparison was cancelled.</source>
        <translation>Der Vergleich wurde abgebrochen.</translation>
    </message>
    <message>
        <source>Compare</source>
        <translation>Vergleichen</translation>
    </message>
    <message>
        <source>The contributors differ only in what is ignored.</source>
        <translation>Die Beiträge unterscheiden sich nur in dem, was nicht beachtet wird.</translation>
    </message>
    <message>
        <source>No differences</source>
        <translation>Keine Unterschiede</translation>
    </message>
    <message>
        <source>Differences: %1</source>
        <translation>Unterschiede: %1</translation>
    </message>
    <message>
        <source>Difference %1 of %2</source>
        <translation>Unterschied %1 von %2</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>S&amp;wap Order</source>
        <translation>&amp;Reihenfolge umkehren</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>&amp;Bearbeiten</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Ansicht</translation>
    </message>
    <message>
        <source>&amp;Differences</source>
        <translation>&amp;Unterschiede</translation>
    </message>
    <message>
        <source>&amp;Ignore</source>
        <translation>&amp;Nicht beachten</translation>
    </message>
    <message>
        <source>&amp;Previous Difference</source>
        <translation>&amp;Voriger Unterschied</translation>
    </message>
    <message>
        <source>&amp;Next Difference</source>
        <translation>&amp;Nächster Unterschied</translation>
    </message>
    <message>
        <source>&amp;First Difference</source>
        <translation>&amp;Erster Unterschied</translation>
    </message>
    <message>
        <source>&amp;Last Difference</source>
        <translation>&amp;Letzter Unterschied</translation>
    </message>
</context>
<context>
    <name>FindBar</name>
    <message>
        <source>Match &amp;case</source>
        <translation>&amp;Groß- und Kleinschreibung beachten</translation>
    </message>
    <message>
        <source>&amp;Wrap around</source>
        <translation>&amp;Am Ende von vorn</translation>
    </message>
    <message>
        <source>Find:</source>
        <translation>Suchen:</translation>
    </message>
    <message>
        <source>Find previous</source>
        <translation>Vorige Fundstelle</translation>
    </message>
    <message>
        <source>Find next</source>
        <translation>Nächste Fundstelle</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Phrase to find</source>
        <translation>Gesuchter Text</translation>
    </message>
    <message>
        <source>Not found</source>
        <translation>Nicht gefunden</translation>
    </message>
</context>
<context>
    <name>FolderModel</name>
    <message>
        <source>(the directory itself)</source>
        <translation>(das Verzeichnis selbst)</translation>
    </message>
    <message>
        <source>= same</source>
        <translation>= gleich</translation>
    </message>
    <message>
        <source>≠ different</source>
        <translation>≠ verschieden</translation>
    </message>
    <message>
        <source>+ only here</source>
        <translation>+ nur hier</translation>
    </message>
    <message>
        <source>− missing</source>
        <translation>− fehlt</translation>
    </message>
    <message>
        <source>! a directory</source>
        <translation>! ein Verzeichnis</translation>
    </message>
    <message>
        <source>! a link</source>
        <translation>! ein Verweis</translation>
    </message>
    <message>
        <source>! a file</source>
        <translation>! eine Datei</translation>
    </message>
    <message>
        <source>! %1</source>
        <translation>! %1</translation>
    </message>
    <message>
        <source>Path</source>
        <translation>Pfad</translation>
    </message>
</context>
<context>
    <name>FolderView</name>
    <message>
        <source>Directories</source>
        <translation>Verzeichnisse</translation>
    </message>
    <message>
        <source>Listing…</source>
        <translation>Lese Verzeichnisse …</translation>
    </message>
    <message>
        <source>Different: %1</source>
        <translation>Verschieden: %1</translation>
    </message>
    <message>
        <source>Only in some: %1</source>
        <translation>Nicht überall: %1</translation>
    </message>
    <message>
        <source>Same: %1</source>
        <translation>Gleich: %1</translation>
    </message>
    <message>
        <source>Unreadable: %1</source>
        <translation>Nicht lesbar: %1</translation>
    </message>
    <message>
        <source>Not compared yet: %1</source>
        <translation>Noch nicht verglichen: %1</translation>
    </message>
    <message>
        <source>Cancelled</source>
        <translation>Abgebrochen</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>&amp;Open Row</source>
        <translation>Zeile ö&amp;ffnen</translation>
    </message>
    <message>
        <source>&amp;Reload</source>
        <translation>&amp;Neu laden</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>S&amp;chließen</translation>
    </message>
    <message>
        <source>&amp;Show</source>
        <translation>&amp;Zeigen</translation>
    </message>
    <message>
        <source>&amp;Same</source>
        <translation>&amp;Gleiche</translation>
    </message>
    <message>
        <source>&amp;Different</source>
        <translation>&amp;Verschiedene</translation>
    </message>
    <message>
        <source>Only in S&amp;ome</source>
        <translation>Nicht ü&amp;berall vorhandene</translation>
    </message>
    <message>
        <source>&amp;Differences</source>
        <translation>&amp;Unterschiede</translation>
    </message>
    <message>
        <source>&amp;Previous Difference</source>
        <translation>&amp;Voriger Unterschied</translation>
    </message>
    <message>
        <source>&amp;Next Difference</source>
        <translation>&amp;Nächster Unterschied</translation>
    </message>
</context>
<context>
    <name>Likeness</name>
    <message>
        <source>The files are identical.</source>
        <translation>Die Dateien sind gleich.</translation>
    </message>
    <message>
        <source>The files differ only in line ends and in the byte-order mark.</source>
        <translation>Die Dateien unterscheiden sich nur in Zeilenenden und Byte-Reihenfolge-Marke.</translation>
    </message>
    <message>
        <source>The files differ only in line ends.</source>
        <translation>Die Dateien unterscheiden sich nur in Zeilenenden.</translation>
    </message>
    <message>
        <source>The files differ only in the byte-order mark.</source>
        <translation>Die Dateien unterscheiden sich nur in der Byte-Reihenfolge-Marke.</translation>
    </message>
    <message>
        <source>The files differ only in encoding, line ends and byte-order mark.</source>
        <translation>Die Dateien unterscheiden sich nur in Kodierung, Zeilenenden und Byte-Reihenfolge-Marke.</translation>
    </message>
    <message>
        <source>The files differ only in encoding and line ends.</source>
        <translation>Die Dateien unterscheiden sich nur in Kodierung und Zeilenenden.</translation>
    </message>
    <message>
        <source>The files differ only in encoding and byte-order mark.</source>
        <translation>Die Dateien unterscheiden sich nur in Kodierung und Byte-Reihenfolge-Marke.</translation>
    </message>
    <message>
        <source>The files differ only in encoding.</source>
        <translation>Die Dateien unterscheiden sich nur in der Kodierung.</translation>
    </message>
</context>
<context>
    <name>MergeView</name>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>&amp;Save and Close</source>
        <translation>&amp;Speichern und schließen</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>&amp;Bearbeiten</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Ansicht</translation>
    </message>
    <message>
        <source>&amp;Differences</source>
        <translation>&amp;Unterschiede</translation>
    </message>
    <message>
        <source>&amp;Merge</source>
        <translation>&amp;Zusammenführen</translation>
    </message>
    <message>
        <source>&amp;Undo</source>
        <translation>&amp;Rückgängig</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>&amp;Wiederholen</translation>
    </message>
    <message>
        <source>Cu&amp;t</source>
        <translation>&amp;Ausschneiden</translation>
    </message>
    <message>
        <source>&amp;Paste</source>
        <translation>&amp;Einfügen</translation>
    </message>
    <message>
        <source>Next &amp;Pane</source>
        <translation>Nächster &amp;Bereich</translation>
    </message>
    <message>
        <source>&amp;Previous Difference</source>
        <translation>&amp;Voriger Unterschied</translation>
    </message>
    <message>
        <source>&amp;Next Difference</source>
        <translation>&amp;Nächster Unterschied</translation>
    </message>
    <message>
        <source>Pre&amp;vious Unresolved</source>
        <translation>Voriger &amp;offener Konflikt</translation>
    </message>
    <message>
        <source>N&amp;ext Unresolved</source>
        <translation>Nächster o&amp;ffener Konflikt</translation>
    </message>
    <message>
        <source>Previous Unresolved</source>
        <translation>Voriger offener Konflikt</translation>
    </message>
    <message>
        <source>Next Unresolved</source>
        <translation>Nächster offener Konflikt</translation>
    </message>
    <message>
        <source>Take %1</source>
        <translation>%1 nehmen</translation>
    </message>
    <message>
        <source>Take %1 Too</source>
        <translation>Auch %1 nehmen</translation>
    </message>
    <message>
        <source>Take &amp;None</source>
        <translation>&amp;Keinen nehmen</translation>
    </message>
    <message>
        <source>Put &amp;Back</source>
        <translation>&amp;Zurücksetzen</translation>
    </message>
    <message>
        <source>Take for All &amp;Unresolved</source>
        <translation>Für alle &amp;offenen Konflikte nehmen</translation>
    </message>
    <message>
        <source>The First Is the Common &amp;Ancestor</source>
        <translation>Der erste ist der gemeinsame &amp;Vorfahr</translation>
    </message>
    <message>
        <source>Result: %1</source>
        <translation>Ergebnis: %1</translation>
    </message>
    <message>
        <source> (common ancestor)</source>
        <translation> (gemeinsamer Vorfahr)</translation>
    </message>
    <message>
        <source>Not merged</source>
        <translation>Nicht zusammengeführt</translation>
    </message>
    <message>
        <source>Directories cannot be merged. Compare them, and merge file by file.</source>
        <translation>Verzeichnisse können nicht zusammengeführt werden. Vergleichen Sie sie, und führen Sie einzelne Dateien zusammen.</translation>
    </message>
    <message>
        <source>Merging…</source>
        <translation>Führe zusammen …</translation>
    </message>
    <message>
        <source>The merge was cancelled.</source>
        <translation>Das Zusammenführen wurde abgebrochen.</translation>
    </message>
    <message>
        <source>Merge</source>
        <translation>Zusammenführen</translation>
    </message>
    <message>
        <source>No conflicts: ready to save</source>
        <translation>Keine Konflikte: kann gespeichert werden</translation>
    </message>
    <message>
        <source>All conflicts resolved (%1): ready to save</source>
        <translation>Alle Konflikte gelöst (%1): kann gespeichert werden</translation>
    </message>
    <message>
        <source>%1 of %2 conflicts resolved</source>
        <translation>%1 von %2 Konflikten gelöst</translation>
    </message>
    <message>
        <source>The output cannot be written: %1. Nothing is lost; it can be saved again.</source>
        <translation>Das Ergebnis kann nicht geschrieben werden: %1. Nichts ist verloren; es kann erneut gespeichert werden.</translation>
    </message>
    <message>
        <source>The merge begins anew.</source>
        <translation>Die Zusammenführung beginnt von vorn.</translation>
    </message>
    <message>
        <source>What was chosen and typed so far will be lost.</source>
        <translation>Was bisher gewählt und getippt wurde, geht verloren.</translation>
    </message>
    <message>
        <source>Begin &amp;Anew</source>
        <translation>Von &amp;vorn beginnen</translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation>&amp;Abbrechen</translation>
    </message>
</context>
<context>
    <name>OptionMenus</name>
    <message>
        <source>&amp;Larger Letters</source>
        <translation>&amp;Größere Schrift</translation>
    </message>
    <message>
        <source>&amp;Smaller Letters</source>
        <translation>&amp;Kleinere Schrift</translation>
    </message>
    <message>
        <source>&amp;Normal Letters</source>
        <translation>&amp;Normale Schrift</translation>
    </message>
    <message>
        <source>&amp;Tab Width</source>
        <translation>&amp;Tabulatorweite</translation>
    </message>
    <message>
        <source>&amp;Wrap Long Lines</source>
        <translation>&amp;Lange Zeilen umbrechen</translation>
    </message>
    <message>
        <source>Show White S&amp;pace</source>
        <translation>Leer&amp;raum zeigen</translation>
    </message>
    <message>
        <source>&amp;Collapse Equal Lines</source>
        <translation>Gleiche &amp;Zeilen einklappen</translation>
    </message>
    <message>
        <source>White Space &amp;Counts</source>
        <translation>&amp;Leerraum beachten</translation>
    </message>
    <message>
        <source>Ignore the &amp;Amount of White Space</source>
        <translation>&amp;Menge des Leerraums nicht beachten</translation>
    </message>
    <message>
        <source>Ignore &amp;All White Space</source>
        <translation>Leerraum &amp;nicht beachten</translation>
    </message>
    <message>
        <source>Ignore Upper and &amp;Lower Case</source>
        <translation>&amp;Groß- und Kleinschreibung nicht beachten</translation>
    </message>
    <message>
        <source>Ignore Line &amp;Ends</source>
        <translation>&amp;Zeilenenden nicht beachten</translation>
    </message>
    <message>
        <source>Ignore &amp;Blank Lines</source>
        <translation>Leer&amp;zeilen nicht beachten</translation>
    </message>
</context>
<context>
    <name>OverviewBar</name>
    <message>
        <source>Overview of all differences</source>
        <translation>Übersicht über alle Unterschiede</translation>
    </message>
</context>
<context>
    <name>ProblemPanel</name>
    <message>
        <source>It is a directory, not a file.</source>
        <translation>Es ist ein Verzeichnis, keine Datei.</translation>
    </message>
    <message>
        <source>It is neither a file nor a directory.</source>
        <translation>Es ist weder Datei noch Verzeichnis.</translation>
    </message>
    <message>
        <source>The bytes are no character.</source>
        <translation>Die Bytes sind kein Zeichen.</translation>
    </message>
    <message>
        <source>A character is cut short.</source>
        <translation>Ein Zeichen ist unvollständig.</translation>
    </message>
    <message>
        <source>A character has a longer form than it should.</source>
        <translation>Ein Zeichen hat eine längere Form, als es haben darf.</translation>
    </message>
    <message>
        <source>A surrogate stands there, which is no character.</source>
        <translation>Dort steht ein Surrogat, das kein Zeichen ist.</translation>
    </message>
    <message>
        <source>A surrogate lacks its other half.</source>
        <translation>Einem Surrogat fehlt seine andere Hälfte.</translation>
    </message>
    <message>
        <source>A value is above 10FFFF, the highest that a character can have.</source>
        <translation>Ein Wert ist größer als 10FFFF, der höchste eines Zeichens.</translation>
    </message>
    <message>
        <source>Byte offset %1, line %2.</source>
        <translation>Byte-Position %1, Zeile %2.</translation>
    </message>
    <message>
        <source>This file is not valid %1.</source>
        <translation>Diese Datei ist kein gültiges %1.</translation>
    </message>
    <message>
        <source>This contributor cannot be shown.</source>
        <translation>Dieser Beitrag kann nicht gezeigt werden.</translation>
    </message>
</context>
<context>
    <name>ResultPane</name>
    <message>
        <source>Result</source>
        <translation>Ergebnis</translation>
    </message>
</context>
<context>
    <name>RowPainter</name>
    <message>
        <source>Equal lines: %1</source>
        <translation>Gleiche Zeilen: %1</translation>
    </message>
    <message>
        <source>Conflict: choose a contributor, or type</source>
        <translation>Konflikt: Beitrag wählen oder Text eingeben</translation>
    </message>
</context>
<context>
    <name>SideBySide</name>
    <message>
        <source>Rows</source>
        <translation>Zeilen</translation>
    </message>
    <message>
        <source>Columns of characters</source>
        <translation>Spalten</translation>
    </message>
</context>
<context>
    <name>TextPage</name>
    <message>
        <source>Line %1, column %2</source>
        <translation>Zeile %1, Spalte %2</translation>
    </message>
    <message>
        <source>Go to Line</source>
        <translation>Gehe zu Zeile</translation>
    </message>
    <message>
        <source>Line number:</source>
        <translation>Zeilennummer:</translation>
    </message>
    <message>
        <source>%1 has changed on disk.</source>
        <translation>%1 wurde auf der Platte geändert.</translation>
    </message>
    <message>
        <source>Reload</source>
        <translation>Neu laden</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>S&amp;chließen</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Kopieren</translation>
    </message>
    <message>
        <source>Select &amp;All</source>
        <translation>&amp;Alles auswählen</translation>
    </message>
    <message>
        <source>&amp;Find…</source>
        <translation>&amp;Suchen …</translation>
    </message>
    <message>
        <source>Find &amp;Next</source>
        <translation>&amp;Weitersuchen</translation>
    </message>
    <message>
        <source>Find &amp;Previous</source>
        <translation>&amp;Rückwärts suchen</translation>
    </message>
    <message>
        <source>&amp;Go to Line…</source>
        <translation>&amp;Gehe zu Zeile …</translation>
    </message>
    <message>
        <source>&amp;Reload</source>
        <translation>&amp;Neu laden</translation>
    </message>
    <message>
        <source>Show the Nearest C&amp;ollapsed Lines</source>
        <translation>Nächste &amp;eingeklappte Zeilen zeigen</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>ViewerWindow</name>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Tools</source>
        <translation>Werkzeuge</translation>
    </message>
    <message>
        <source>Reading…</source>
        <translation>Lese …</translation>
    </message>
    <message>
        <source>The result of the merge is not saved.</source>
        <translation>Das Ergebnis ist nicht gespeichert.</translation>
    </message>
    <message>
        <source>Save it before closing?</source>
        <translation>Vor dem Schließen speichern?</translation>
    </message>
    <message>
        <source>It cannot be saved yet: conflicts are unresolved.</source>
        <translation>Es kann noch nicht gespeichert werden: Konflikte sind offen.</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>&amp;Speichern</translation>
    </message>
    <message>
        <source>&amp;Discard</source>
        <translation>&amp;Verwerfen</translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation>&amp;Abbrechen</translation>
    </message>
</context>
</TS>
