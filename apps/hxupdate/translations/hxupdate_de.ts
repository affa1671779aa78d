<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>ConditionWords</name>
    <message>
        <source>It answers, and its code is intact.</source>
        <translation>Es antwortet, und sein Code ist unversehrt.</translation>
    </message>
    <message>
        <source>It answers, and it holds no valid code.</source>
        <translation>Es antwortet, und es enthält keinen gültigen Code.</translation>
    </message>
    <message>
        <source>It answers, and its code is damaged.</source>
        <translation>Es antwortet, und sein Code ist beschädigt.</translation>
    </message>
    <message>
        <source>Another product answers in its place.</source>
        <translation>An seiner Stelle antwortet ein anderes Produkt.</translation>
    </message>
    <message>
        <source>It does not answer.</source>
        <translation>Es antwortet nicht.</translation>
    </message>
    <message>
        <source>It is no longer connected.</source>
        <translation>Es ist nicht mehr angeschlossen.</translation>
    </message>
    <message>
        <source>It answers only in part.</source>
        <translation>Es antwortet nur teilweise.</translation>
    </message>
</context>
<context>
    <name>ConnectPage</name>
    <message>
        <source>My product is on another &amp;port...</source>
        <translation>Mein Produkt ist an einem anderen &amp;Port...</translation>
    </message>
    <message>
        <source>&amp;Continue</source>
        <translation>&amp;Weiter</translation>
    </message>
    <message>
        <source>not known</source>
        <translation>nicht bekannt</translation>
    </message>
    <message>
        <source>Product</source>
        <translation>Produkt</translation>
    </message>
    <message>
        <source>Serial number</source>
        <translation>Seriennummer</translation>
    </message>
    <message>
        <source>Installed version</source>
        <translation>Installierte Version</translation>
    </message>
    <message>
        <source>Port</source>
        <translation>Port</translation>
    </message>
    <message>
        <source>Details</source>
        <translation>Einzelheiten (englisch)</translation>
    </message>
    <message>
        <source>none that is valid</source>
        <translation>keine gültige</translation>
    </message>
</context>
<context>
    <name>ConnectWords</name>
    <message>
        <source>Looking for your product</source>
        <translation>Ihr Produkt wird gesucht</translation>
    </message>
    <message>
        <source>Each port with the name of a product is asked who is there. Nothing in the product is changed.</source>
        <translation>Jeder Port mit dem Namen eines Produkts wird gefragt, wer dort ist. Am Produkt wird nichts geändert.</translation>
    </message>
    <message>
        <source>No device plugin was found</source>
        <translation>Kein Geräte-Plugin gefunden</translation>
    </message>
    <message>
        <source>Without the plugin of your product this program does not know how to speak to it.</source>
        <translation>Ohne das Plugin Ihres Produkts weiß dieses Programm nicht, wie es mit ihm sprechen soll.</translation>
    </message>
    <message>
        <source>Install the device plugin of your product.</source>
        <translation>Installieren Sie das Geräte-Plugin Ihres Produkts.</translation>
    </message>
    <message>
        <source>Start this program again.</source>
        <translation>Starten Sie dieses Programm neu.</translation>
    </message>
    <message>
        <source>No MIDI port was found</source>
        <translation>Kein MIDI-Port gefunden</translation>
    </message>
    <message>
        <source>This computer has no MIDI port at the moment.</source>
        <translation>Dieser Computer hat im Moment keinen MIDI-Port.</translation>
    </message>
    <message>
        <source>Connect your product, or the MIDI interface that it is connected to, to this computer.</source>
        <translation>Schließen Sie Ihr Produkt, oder das MIDI-Interface, an dem es hängt, an diesen Computer an.</translation>
    </message>
    <message>
        <source>Switch the product on.</source>
        <translation>Schalten Sie das Produkt ein.</translation>
    </message>
    <message>
        <source>Wait a moment. A new port is found by itself.</source>
        <translation>Warten Sie einen Moment. Ein neuer Port wird von selbst gefunden.</translation>
    </message>
    <message>
        <source>No product was found</source>
        <translation>Kein Produkt gefunden</translation>
    </message>
    <message>
        <source>There are MIDI ports, but none of them has the name of a product.</source>
        <translation>Es gibt MIDI-Ports, aber keiner trägt den Namen eines Produkts.</translation>
    </message>
    <message>
        <source>Connect your product to this computer and switch it on.</source>
        <translation>Schließen Sie Ihr Produkt an diesen Computer an und schalten Sie es ein.</translation>
    </message>
    <message>
        <source>If your product is connected through a MIDI interface, press &quot;My product is on another port&quot; and choose it.</source>
        <translation>Wenn Ihr Produkt an einem MIDI-Interface hängt, drücken Sie „Mein Produkt ist an einem anderen Port“ und wählen Sie es.</translation>
    </message>
    <message>
        <source>The product does not answer</source>
        <translation>Das Produkt antwortet nicht</translation>
    </message>
    <message>
        <source>The port was opened, but nothing answered on it.</source>
        <translation>Der Port wurde geöffnet, aber niemand hat dort geantwortet.</translation>
    </message>
    <message>
        <source>Check that the product is switched on.</source>
        <translation>Prüfen Sie, ob das Produkt eingeschaltet ist.</translation>
    </message>
    <message>
        <source>Check both MIDI cables, from output to input each.</source>
        <translation>Prüfen Sie beide MIDI-Kabel: jedes führt von einem Ausgang zu einem Eingang.</translation>
    </message>
    <message>
        <source>Switch the product off and on. It is asked again every second.</source>
        <translation>Schalten Sie das Produkt aus und wieder ein. Es wird jede Sekunde neu gefragt.</translation>
    </message>
    <message>
        <source>The product answers only in part</source>
        <translation>Das Produkt antwortet nur zum Teil</translation>
    </message>
    <message>
        <source>Some questions were answered, others were not.</source>
        <translation>Manche Fragen wurden beantwortet, andere nicht.</translation>
    </message>
    <message>
        <source>Close all other programs that use MIDI.</source>
        <translation>Schließen Sie alle anderen Programme, die MIDI benutzen.</translation>
    </message>
    <message>
        <source>Another product answered</source>
        <translation>Ein anderes Produkt hat geantwortet</translation>
    </message>
    <message>
        <source>No device plugin on this computer is made for what answered.</source>
        <translation>Kein Geräte-Plugin auf diesem Computer ist für das gemacht, was geantwortet hat.</translation>
    </message>
    <message>
        <source>Disconnect what is connected now.</source>
        <translation>Trennen Sie, was jetzt angeschlossen ist.</translation>
    </message>
    <message>
        <source>Connect the product that you want to update.</source>
        <translation>Schließen Sie das Produkt an, das Sie aktualisieren möchten.</translation>
    </message>
    <message>
        <source>If it was the right one, install its device plugin and start this program again.</source>
        <translation>Wenn es das richtige war, installieren Sie sein Geräte-Plugin und starten Sie dieses Programm neu.</translation>
    </message>
    <message>
        <source>The port cannot be opened</source>
        <translation>Der Port lässt sich nicht öffnen</translation>
    </message>
    <message>
        <source>Another program seems to hold it.</source>
        <translation>Ein anderes Programm scheint ihn zu benutzen.</translation>
    </message>
    <message>
        <source>Wait a moment. The port is tried again every second.</source>
        <translation>Warten Sie einen Moment. Der Port wird jede Sekunde neu versucht.</translation>
    </message>
    <message>
        <source>If that does not help, disconnect the product and connect it again.</source>
        <translation>Wenn das nicht hilft, trennen Sie das Produkt und schließen Sie es wieder an.</translation>
    </message>
    <message>
        <source>More than one product answered</source>
        <translation>Mehr als ein Produkt hat geantwortet</translation>
    </message>
    <message>
        <source>So that the right one is updated, only one may answer.</source>
        <translation>Damit das richtige aktualisiert wird, darf nur eines antworten.</translation>
    </message>
    <message>
        <source>Disconnect all but the one that you want to update.</source>
        <translation>Trennen Sie alle bis auf das eine, das Sie aktualisieren möchten.</translation>
    </message>
    <message>
        <source>Or press &quot;My product is on another port&quot; and choose the port of the right one.</source>
        <translation>Oder drücken Sie „Mein Produkt ist an einem anderen Port“ und wählen Sie den Port des richtigen.</translation>
    </message>
    <message>
        <source>%1 was found</source>
        <translation>%1 wurde gefunden</translation>
    </message>
    <message>
        <source>It answers, and its code is intact.</source>
        <translation>Es antwortet, und sein Code ist unversehrt.</translation>
    </message>
    <message>
        <source>Press &quot;Continue&quot; if this is the product that you want to update.</source>
        <translation>Drücken Sie „Weiter“, wenn dies das Produkt ist, das Sie aktualisieren möchten.</translation>
    </message>
    <message>
        <source>%1 has to be recovered</source>
        <translation>%1 muss wiederhergestellt werden</translation>
    </message>
    <message>
        <source>Leave the product switched on and connected.</source>
        <translation>Lassen Sie das Produkt eingeschaltet und angeschlossen.</translation>
    </message>
    <message>
        <source>Press &quot;Continue&quot;.</source>
        <translation>Drücken Sie „Weiter“.</translation>
    </message>
    <message>
        <source>Send the update image again. The update starts afresh.</source>
        <translation>Senden Sie das Update noch einmal. Es beginnt von vorn.</translation>
    </message>
    <message>
        <source>It answers, but it holds no valid code: an update was begun and not finished, or its code is damaged. It can be updated as ever.</source>
        <translation>Es antwortet, enthält aber keinen gültigen Code: Ein Update wurde begonnen und nicht beendet, oder sein Code ist beschädigt. Es lässt sich wie gewohnt aktualisieren.</translation>
    </message>
</context>
<context>
    <name>EndingWords</name>
    <message>
        <source>%1 was updated</source>
        <translation>%1 wurde aktualisiert</translation>
    </message>
    <message>
        <source>Every message was acknowledged, the checksums agree, and the product answers with the version of the image.</source>
        <translation>Jede Nachricht wurde bestätigt, die Prüfsummen stimmen überein, und das Produkt antwortet mit der Version des Updates.</translation>
    </message>
    <message>
        <source>You can use the product again, or switch it off.</source>
        <translation>Sie können das Produkt wieder benutzen oder ausschalten.</translation>
    </message>
    <message>
        <source>The port could not be opened</source>
        <translation>Der Port ließ sich nicht öffnen</translation>
    </message>
    <message>
        <source>Nothing was sent: the product is as it was.</source>
        <translation>Es wurde nichts gesendet: Das Produkt ist, wie es war.</translation>
    </message>
    <message>
        <source>Close all other programs that use MIDI.</source>
        <translation>Schließen Sie alle anderen Programme, die MIDI benutzen.</translation>
    </message>
    <message>
        <source>Check that the product is connected and switched on.</source>
        <translation>Prüfen Sie, ob das Produkt angeschlossen und eingeschaltet ist.</translation>
    </message>
    <message>
        <source>Press &quot;Try again&quot;.</source>
        <translation>Drücken Sie „Noch einmal“.</translation>
    </message>
    <message>
        <source>Another unit is connected</source>
        <translation>Ein anderes Exemplar ist angeschlossen</translation>
    </message>
    <message>
        <source>Its serial number is not the one that you reviewed. Nothing was sent: the product is as it was.</source>
        <translation>Seine Seriennummer ist nicht die, die Sie geprüft haben. Es wurde nichts gesendet: Das Produkt ist, wie es war.</translation>
    </message>
    <message>
        <source>Connect the unit that you want to update, and no other.</source>
        <translation>Schließen Sie das Exemplar an, das Sie aktualisieren möchten, und kein anderes.</translation>
    </message>
    <message>
        <source>The update image does not fit</source>
        <translation>Das Update passt nicht</translation>
    </message>
    <message>
        <source>Get the image that is made for this product.</source>
        <translation>Besorgen Sie das Update, das für dieses Produkt gemacht ist.</translation>
    </message>
    <message>
        <source>Press &quot;Try again&quot; and choose it.</source>
        <translation>Drücken Sie „Noch einmal“ und wählen Sie es.</translation>
    </message>
    <message>
        <source>The product does not answer</source>
        <translation>Das Produkt antwortet nicht</translation>
    </message>
    <message>
        <source>Switch it off and on.</source>
        <translation>Schalten Sie es aus und wieder ein.</translation>
    </message>
    <message>
        <source>Another product answered</source>
        <translation>Ein anderes Produkt hat geantwortet</translation>
    </message>
    <message>
        <source>It is not the one that the image is for. Nothing was sent: the product is as it was.</source>
        <translation>Das Update ist nicht für dieses Produkt. Es wurde nichts gesendet: Das Produkt ist, wie es war.</translation>
    </message>
    <message>
        <source>Connect the product that you want to update, and no other.</source>
        <translation>Schließen Sie das Produkt an, das Sie aktualisieren möchten, und kein anderes.</translation>
    </message>
    <message>
        <source>You stopped the update</source>
        <translation>Sie haben das Update abgebrochen</translation>
    </message>
    <message>
        <source>Press &quot;Try again&quot; when you want to update it.</source>
        <translation>Drücken Sie „Noch einmal“, wenn Sie es aktualisieren möchten.</translation>
    </message>
    <message>
        <source>The product was disconnected</source>
        <translation>Das Produkt wurde getrennt</translation>
    </message>
    <message>
        <source>Connect the product again.</source>
        <translation>Schließen Sie das Produkt wieder an.</translation>
    </message>
    <message>
        <source>The product stopped answering</source>
        <translation>Das Produkt antwortet nicht mehr</translation>
    </message>
    <message>
        <source>Check both MIDI cables, and switch the product off and on.</source>
        <translation>Prüfen Sie beide MIDI-Kabel, und schalten Sie das Produkt aus und wieder ein.</translation>
    </message>
    <message>
        <source>Press &quot;Try again&quot;: the product is found again.</source>
        <translation>Drücken Sie „Noch einmal“: Das Produkt wird wiedergefunden.</translation>
    </message>
    <message>
        <source>Send the same image. The update starts afresh.</source>
        <translation>Senden Sie dasselbe Update. Es beginnt von vorn.</translation>
    </message>
    <message>
        <source>The product refused the update</source>
        <translation>Das Produkt hat das Update abgelehnt</translation>
    </message>
    <message>
        <source>If it is refused again, save the record and send it to the maker of the product.</source>
        <translation>Wird es wieder abgelehnt, sichern Sie das Protokoll und senden Sie es dem Hersteller des Produkts.</translation>
    </message>
    <message>
        <source>Leave the product switched on and connected.</source>
        <translation>Lassen Sie das Produkt eingeschaltet und angeschlossen.</translation>
    </message>
    <message>
        <source>The connection was lost</source>
        <translation>Die Verbindung ist abgebrochen</translation>
    </message>
    <message>
        <source>Connect the product again and switch it on.</source>
        <translation>Schließen Sie das Produkt wieder an und schalten Sie es ein.</translation>
    </message>
    <message>
        <source>The update is not proven</source>
        <translation>Das Update ist nicht erwiesen</translation>
    </message>
    <message>
        <source>Everything was sent, but the product does not report what it should. Do not take it for updated.</source>
        <translation>Alles wurde gesendet, aber das Produkt meldet nicht, was es soll. Halten Sie es nicht für aktualisiert.</translation>
    </message>
    <message>
        <source>Switch the product off and on.</source>
        <translation>Schalten Sie das Produkt aus und wieder ein.</translation>
    </message>
    <message>
        <source>Press &quot;Try again&quot; and send the same image.</source>
        <translation>Drücken Sie „Noch einmal“ und senden Sie dasselbe Update.</translation>
    </message>
    <message>
        <source>If it ends like this again, save the record and send it to the maker of the product.</source>
        <translation>Endet es wieder so, sichern Sie das Protokoll und senden Sie es dem Hersteller des Produkts.</translation>
    </message>
    <message>
        <source>Another product answered afterwards</source>
        <translation>Danach hat ein anderes Produkt geantwortet</translation>
    </message>
    <message>
        <source>Another product took its place</source>
        <translation>Ein anderes Produkt ist an seine Stelle getreten</translation>
    </message>
    <message>
        <source>Everything was sent, but what answers now is another product. Do not take yours for updated.</source>
        <translation>Alles wurde gesendet, aber jetzt antwortet ein anderes Produkt. Halten Sie Ihres nicht für aktualisiert.</translation>
    </message>
    <message>
        <source>The update was begun and not finished. Send the image again before you use the product.</source>
        <translation>Das Update wurde begonnen und nicht beendet. Senden Sie das Update noch einmal, bevor Sie das Produkt benutzen.</translation>
    </message>
    <message>
        <source>Bytes are lost on the way to the product</source>
        <translation>Auf dem Weg zum Produkt gehen Bytes verloren</translation>
    </message>
    <message>
        <source>Use other MIDI cables, or another MIDI interface.</source>
        <translation>Nehmen Sie andere MIDI-Kabel oder ein anderes MIDI-Interface.</translation>
    </message>
    <message>
        <source>The update was not acknowledged</source>
        <translation>Das Update wurde nicht bestätigt</translation>
    </message>
    <message>
        <source>The product holds the code of the image, but it did not acknowledge every message. Send the image again before you use the product.</source>
        <translation>Das Produkt enthält den Code des Updates, hat aber nicht jede Nachricht bestätigt. Senden Sie das Update noch einmal, bevor Sie das Produkt benutzen.</translation>
    </message>
    <message>
        <source>You stopped the verification</source>
        <translation>Sie haben die Nachprüfung abgebrochen</translation>
    </message>
    <message>
        <source>Everything was sent, but it was not verified. Do not take it for updated.</source>
        <translation>Alles wurde gesendet, aber nicht nachgeprüft. Halten Sie es nicht für aktualisiert.</translation>
    </message>
</context>
<context>
    <name>FactList</name>
    <message>
        <source>%1:</source>
        <translation>%1:</translation>
    </message>
</context>
<context>
    <name>FileDialogs</name>
    <message>
        <source>Choose the update image</source>
        <translation>Wählen Sie das Update</translation>
    </message>
    <message>
        <source>Update images (*.syx *.mid *.hex *.txt)</source>
        <translation>Updates (*.syx *.mid *.hex *.txt)</translation>
    </message>
    <message>
        <source>All files (*)</source>
        <translation>Alle Dateien (*)</translation>
    </message>
    <message>
        <source>Save the record</source>
        <translation>Protokoll sichern</translation>
    </message>
</context>
<context>
    <name>ImagePage</name>
    <message>
        <source>&amp;Back</source>
        <translation>&amp;Zurück</translation>
    </message>
    <message>
        <source>Choose &amp;file...</source>
        <translation>&amp;Datei wählen...</translation>
    </message>
    <message>
        <source>&amp;Continue</source>
        <translation>&amp;Weiter</translation>
    </message>
    <message>
        <source>Choose the update image</source>
        <translation>Wählen Sie das Update</translation>
    </message>
    <message>
        <source>It is the file with the new firmware, from the maker of your product.</source>
        <translation>Es ist die Datei mit der neuen Firmware, vom Hersteller Ihres Produkts.</translation>
    </message>
    <message>
        <source>Press &quot;Choose file&quot;, or drop the file anywhere on this window.</source>
        <translation>Drücken Sie „Datei wählen“, oder legen Sie die Datei irgendwo auf diesem Fenster ab.</translation>
    </message>
    <message>
        <source>File</source>
        <translation>Datei</translation>
    </message>
    <message numerus="yes">
        <source>and %n more</source>
        <translation>
            <numerusform>und %n weiterer</numerusform>
            <numerusform>und %n weitere</numerusform>
        </translation>
    </message>
    <message>
        <source>Details</source>
        <translation>Einzelheiten (englisch)</translation>
    </message>
</context>
<context>
    <name>ImageWords</name>
    <message>
        <source>The update image is good</source>
        <translation>Das Update ist in Ordnung</translation>
    </message>
    <message>
        <source>It is whole, and it is made for %1.</source>
        <translation>Es ist vollständig und für %1 gemacht.</translation>
    </message>
    <message>
        <source>Press &quot;Continue&quot; to see what will be done.</source>
        <translation>Drücken Sie „Weiter“, um zu sehen, was geschehen wird.</translation>
    </message>
    <message>
        <source>This file cannot be checked</source>
        <translation>Diese Datei kann nicht geprüft werden</translation>
    </message>
    <message>
        <source>No device plugin is installed that could tell what is in it.</source>
        <translation>Es ist kein Geräte-Plugin installiert, das sagen könnte, was darin ist.</translation>
    </message>
    <message>
        <source>Install the device plugin of your product.</source>
        <translation>Installieren Sie das Geräte-Plugin Ihres Produkts.</translation>
    </message>
    <message>
        <source>Start this program again.</source>
        <translation>Starten Sie dieses Programm neu.</translation>
    </message>
    <message>
        <source>This is a folder</source>
        <translation>Das ist ein Ordner</translation>
    </message>
    <message>
        <source>An update image is one file.</source>
        <translation>Ein Update ist eine einzelne Datei.</translation>
    </message>
    <message>
        <source>Press &quot;Choose file&quot;, open the folder and choose the file in it.</source>
        <translation>Drücken Sie „Datei wählen“, öffnen Sie den Ordner und wählen Sie die Datei darin.</translation>
    </message>
    <message>
        <source>This file cannot be read</source>
        <translation>Diese Datei kann nicht gelesen werden</translation>
    </message>
    <message>
        <source>It is not there any more, or you may not open it.</source>
        <translation>Sie ist nicht mehr da, oder Sie dürfen sie nicht öffnen.</translation>
    </message>
    <message>
        <source>Check that the file is there and that you may open it.</source>
        <translation>Prüfen Sie, ob die Datei da ist und ob Sie sie öffnen dürfen.</translation>
    </message>
    <message>
        <source>Press &quot;Choose file&quot;, or drop the file anywhere on this window.</source>
        <translation>Drücken Sie „Datei wählen“, oder legen Sie die Datei irgendwo auf diesem Fenster ab.</translation>
    </message>
    <message>
        <source>This is a web page</source>
        <translation>Das ist eine Webseite</translation>
    </message>
    <message>
        <source>A browser has saved it in the place of the update image.</source>
        <translation>Ein Browser hat sie an der Stelle des Updates gesichert.</translation>
    </message>
    <message>
        <source>Download the file again, from the maker of your product.</source>
        <translation>Laden Sie die Datei noch einmal herunter, vom Hersteller Ihres Produkts.</translation>
    </message>
    <message>
        <source>This is an archive</source>
        <translation>Das ist ein Archiv</translation>
    </message>
    <message>
        <source>The update image may be in it.</source>
        <translation>Das Update ist vielleicht darin.</translation>
    </message>
    <message>
        <source>Unpack the archive.</source>
        <translation>Entpacken Sie das Archiv.</translation>
    </message>
    <message>
        <source>Press &quot;Choose file&quot; and choose the update image that was in it.</source>
        <translation>Drücken Sie „Datei wählen“ und wählen Sie das Update, das darin war.</translation>
    </message>
    <message>
        <source>This is not an update image</source>
        <translation>Das ist kein Update</translation>
    </message>
    <message>
        <source>There is no MIDI message in it.</source>
        <translation>Es ist keine MIDI-Nachricht darin.</translation>
    </message>
    <message>
        <source>Get the file again, from the maker of your product.</source>
        <translation>Besorgen Sie die Datei noch einmal, vom Hersteller Ihres Produkts.</translation>
    </message>
    <message>
        <source>This image is for another product</source>
        <translation>Dieses Update ist für ein anderes Produkt</translation>
    </message>
    <message>
        <source>Its messages are for a product of another kind.</source>
        <translation>Seine Nachrichten sind für ein Produkt anderer Art.</translation>
    </message>
    <message>
        <source>Get the image that is made for your product.</source>
        <translation>Besorgen Sie das Update, das für Ihr Produkt gemacht ist.</translation>
    </message>
    <message>
        <source>This update image is damaged</source>
        <translation>Dieses Update ist beschädigt</translation>
    </message>
    <message>
        <source>Some of it is missing or was changed.</source>
        <translation>Ein Teil davon fehlt oder wurde verändert.</translation>
    </message>
    <message>
        <source>This image is not signed</source>
        <translation>Dieses Update ist nicht signiert</translation>
    </message>
    <message>
        <source>The maker of %1 signs images. Who made this one cannot be known.</source>
        <translation>Der Hersteller von %1 signiert Updates. Von wem dieses stammt, lässt sich nicht feststellen.</translation>
    </message>
    <message>
        <source>Get the image and its signature, the file that ends with &quot;.minisig&quot;, from the maker of your product.</source>
        <translation>Besorgen Sie das Update und seine Signatur, die Datei mit der Endung „.minisig“, vom Hersteller Ihres Produkts.</translation>
    </message>
    <message>
        <source>Put both into one folder, and choose the image again.</source>
        <translation>Legen Sie beide in einen Ordner und wählen Sie das Update noch einmal.</translation>
    </message>
    <message>
        <source>This image is signed by somebody else</source>
        <translation>Dieses Update ist von jemand anderem signiert</translation>
    </message>
    <message>
        <source>It is not signed with a key of the maker of %1.</source>
        <translation>Es ist nicht mit einem Schlüssel des Herstellers von %1 signiert.</translation>
    </message>
    <message>
        <source>This image is not the one that was signed</source>
        <translation>Dieses Update ist nicht das signierte</translation>
    </message>
    <message>
        <source>The image or its signature was changed.</source>
        <translation>Das Update oder seine Signatur wurde verändert.</translation>
    </message>
    <message>
        <source>The signature cannot be checked</source>
        <translation>Die Signatur kann nicht geprüft werden</translation>
    </message>
    <message>
        <source>The key for images of %1 cannot be used.</source>
        <translation>Der Schlüssel für Updates von %1 ist nicht verwendbar.</translation>
    </message>
</context>
<context>
    <name>NoticeWords</name>
    <message>
        <source>The product is no longer connected. Connect it again.</source>
        <translation>Das Produkt ist nicht mehr angeschlossen. Schließen Sie es wieder an.</translation>
    </message>
    <message>
        <source>The image %1 is kept for the next update.</source>
        <translation>Das Update %1 wird für die nächste Aktualisierung aufgehoben.</translation>
    </message>
    <message>
        <source>No file can be taken while an update runs.</source>
        <translation>Während eines Updates kann keine Datei angenommen werden.</translation>
    </message>
    <message>
        <source>Drop one file at a time.</source>
        <translation>Legen Sie immer nur eine Datei ab.</translation>
    </message>
    <message>
        <source>The record was saved: %1</source>
        <translation>Das Protokoll wurde gesichert: %1</translation>
    </message>
    <message>
        <source>The record was not saved: %1. Choose another place.</source>
        <translation>Das Protokoll wurde nicht gesichert: %1. Wählen Sie einen anderen Ort.</translation>
    </message>
    <message>
        <source>The file %1 cannot be used.</source>
        <translation>Die Datei %1 kann nicht verwendet werden.</translation>
    </message>
    <message>
        <source>That is not a file on this computer. Download it first, then drop the file.</source>
        <translation>Das ist keine Datei auf diesem Computer. Laden Sie sie zuerst herunter, und legen Sie dann die Datei ab.</translation>
    </message>
    <message>
        <source>The trace cannot be read. It is damaged in this line: %1</source>
        <translation>Die Aufzeichnung kann nicht gelesen werden. Sie ist in dieser Zeile beschädigt: %1</translation>
    </message>
    <message>
        <source>The product is connected again. The update goes on.</source>
        <translation>Das Produkt ist wieder angeschlossen. Das Update geht weiter.</translation>
    </message>
</context>
<context>
    <name>PageWords</name>
    <message>
        <source>What this page says</source>
        <translation>Was auf dieser Seite steht</translation>
    </message>
</context>
<context>
    <name>PortDialog</name>
    <message>
        <source>MIDI ports</source>
        <translation>MIDI-Ports</translation>
    </message>
    <message>
        <source>&amp;Ask this port</source>
        <translation>&amp;Diesen Port fragen</translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation>&amp;Abbrechen</translation>
    </message>
    <message>
        <source>My product is on another port</source>
        <translation>Mein Produkt ist an einem anderen Port</translation>
    </message>
    <message>
        <source>Choose the port that your product is connected to. What is connected there is asked who it is; nothing else is sent.</source>
        <translation>Wählen Sie den Port, an dem Ihr Produkt hängt. Was dort angeschlossen ist, wird gefragt, wer es ist; sonst wird nichts gesendet.</translation>
    </message>
</context>
<context>
    <name>ReviewPage</name>
    <message>
        <source>&amp;Back</source>
        <translation>&amp;Zurück</translation>
    </message>
    <message>
        <source>Review what will be done</source>
        <translation>Prüfen Sie, was geschehen wird</translation>
    </message>
    <message>
        <source>Product</source>
        <translation>Produkt</translation>
    </message>
    <message>
        <source>Serial number</source>
        <translation>Seriennummer</translation>
    </message>
    <message>
        <source>not known</source>
        <translation>nicht bekannt</translation>
    </message>
    <message>
        <source>Installed version</source>
        <translation>Installierte Version</translation>
    </message>
    <message>
        <source>none that is valid</source>
        <translation>keine gültige</translation>
    </message>
    <message>
        <source>Version of the image</source>
        <translation>Version des Updates</translation>
    </message>
    <message>
        <source>Kind of the image</source>
        <translation>Art des Updates</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Größe</translation>
    </message>
    <message numerus="yes">
        <source>%1 in %n message(s)</source>
        <translation>
            <numerusform>%1 in %n Nachricht</numerusform>
            <numerusform>%1 in %n Nachrichten</numerusform>
        </translation>
    </message>
    <message>
        <source>File</source>
        <translation>Datei</translation>
    </message>
    <message>
        <source>What it does</source>
        <translation>Was es bewirkt</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>Dauer</translation>
    </message>
    <message>
        <source>about %1</source>
        <translation>etwa %1</translation>
    </message>
    <message>
        <source>Nothing has been sent yet. Check that this is what you want.</source>
        <translation>Noch wurde nichts gesendet. Prüfen Sie, ob dies das ist, was Sie möchten.</translation>
    </message>
    <message>
        <source>Leave %1 switched on and connected until the end is told.</source>
        <translation>Lassen Sie %1 eingeschaltet und angeschlossen, bis das Ende gemeldet wird.</translation>
    </message>
    <message>
        <source>Until then do not play, and do not use other programs that use MIDI.</source>
        <translation>Spielen Sie bis dahin nicht, und benutzen Sie keine anderen MIDI-Programme.</translation>
    </message>
    <message>
        <source>Until then do not switch this computer off or close its lid.</source>
        <translation>Schalten Sie bis dahin diesen Computer nicht aus und klappen Sie ihn nicht zu.</translation>
    </message>
    <message>
        <source>Signature</source>
        <translation>Signatur</translation>
    </message>
</context>
<context>
    <name>StepBar</name>
    <message>
        <source>Connect</source>
        <translation>Verbinden</translation>
    </message>
    <message>
        <source>Choose image</source>
        <translation>Update wählen</translation>
    </message>
    <message>
        <source>Review</source>
        <translation>Prüfen</translation>
    </message>
    <message>
        <source>Updating</source>
        <translation>Übertragen</translation>
    </message>
    <message>
        <source>Verifying</source>
        <translation>Nachprüfen</translation>
    </message>
    <message>
        <source>Verdict</source>
        <translation>Ergebnis</translation>
    </message>
    <message>
        <source>Step %1 of %2: %3</source>
        <translation>Schritt %1 von %2: %3</translation>
    </message>
</context>
<context>
    <name>StopQuestion</name>
    <message>
        <source>Stop the update?</source>
        <translation>Update abbrechen?</translation>
    </message>
    <message>
        <source>The message that is on its way is sent to its end. After that the product may have to be updated before it can be used.</source>
        <translation>Die Nachricht, die unterwegs ist, wird zu Ende gesendet. Danach muss das Produkt vielleicht erst aktualisiert werden, bevor es sich benutzen lässt.</translation>
    </message>
    <message>
        <source>&amp;Go on updating</source>
        <translation>&amp;Fortfahren</translation>
    </message>
    <message>
        <source>&amp;Stop the update</source>
        <translation>Update &amp;abbrechen</translation>
    </message>
</context>
<context>
    <name>TraceTable</name>
    <message>
        <source>Seconds</source>
        <translation>Sekunden</translation>
    </message>
    <message>
        <source>Event</source>
        <translation>Ereignis</translation>
    </message>
    <message>
        <source>Message</source>
        <translation>Nachricht</translation>
    </message>
    <message>
        <source>Bytes or text</source>
        <translation>Bytes oder Text</translation>
    </message>
</context>
<context>
    <name>TraceWindow</name>
    <message>
        <source>Trace %1</source>
        <translation>Aufzeichnung %1</translation>
    </message>
    <message>
        <source>Views of the trace</source>
        <translation>Ansichten der Aufzeichnung</translation>
    </message>
    <message>
        <source>&amp;Drawing</source>
        <translation>&amp;Zeichnung</translation>
    </message>
    <message>
        <source>&amp;Table</source>
        <translation>&amp;Tabelle</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>&amp;Schließen</translation>
    </message>
    <message>
        <source>Drawing of the trace; the table has the same in words</source>
        <translation>Zeichnung der Aufzeichnung; die Tabelle sagt dasselbe in Worten</translation>
    </message>
    <message>
        <source>Drawing of the trace</source>
        <translation>Zeichnung der Aufzeichnung</translation>
    </message>
    <message>
        <source>Events of the trace</source>
        <translation>Ereignisse der Aufzeichnung</translation>
    </message>
</context>
<context>
    <name>UnitWords</name>
    <message numerus="yes">
        <source>%n second(s)</source>
        <translation>
            <numerusform>%n Sekunde</numerusform>
            <numerusform>%n Sekunden</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n minute(s)</source>
        <translation>
            <numerusform>%n Minute</numerusform>
            <numerusform>%n Minuten</numerusform>
        </translation>
    </message>
    <message>
        <source>Upgrade: the image is newer than what is installed</source>
        <translation>Aktualisierung: Das Update ist neuer als das, was installiert ist</translation>
    </message>
    <message>
        <source>Downgrade: the image is older than what is installed</source>
        <translation>Rückstufung: Das Update ist älter als das, was installiert ist</translation>
    </message>
    <message>
        <source>Reinstall: the image is the version that is installed</source>
        <translation>Neuinstallation: Das Update ist die Version, die installiert ist</translation>
    </message>
    <message>
        <source>Recover: no valid code is installed</source>
        <translation>Wiederherstellung: Es ist kein gültiger Code installiert</translation>
    </message>
    <message>
        <source>&amp;Upgrade %1</source>
        <translation>%1 &amp;aktualisieren</translation>
    </message>
    <message>
        <source>&amp;Downgrade %1</source>
        <translation>%1 zurück&amp;stufen</translation>
    </message>
    <message>
        <source>&amp;Reinstall %1</source>
        <translation>%1 &amp;neu installieren</translation>
    </message>
    <message>
        <source>&amp;Recover %1</source>
        <translation>%1 &amp;wiederherstellen</translation>
    </message>
    <message>
        <source>signed with the key %1</source>
        <translation>signiert mit dem Schlüssel %1</translation>
    </message>
    <message>
        <source>not signed: its origin is not known</source>
        <translation>nicht signiert: Die Herkunft ist nicht bekannt</translation>
    </message>
    <message>
        <source>firmware, the first of two kinds (%1)</source>
        <translation>Firmware, die erste von zwei Arten (%1)</translation>
    </message>
    <message>
        <source>firmware, the second of two kinds (%1)</source>
        <translation>Firmware, die zweite von zwei Arten (%1)</translation>
    </message>
    <message>
        <source>not known</source>
        <translation>nicht bekannt</translation>
    </message>
</context>
<context>
    <name>UpdateWindow</name>
    <message>
        <source>Simulated product: this is a try. No real product is connected or changed.</source>
        <translation>Simuliertes Produkt: Dies ist ein Versuch. Kein wirkliches Produkt ist angeschlossen oder wird verändert.</translation>
    </message>
    <message>
        <source>%1 - HxUpdate</source>
        <translation>%1 - HxUpdate</translation>
    </message>
    <message>
        <source>%1 % - %2 - HxUpdate</source>
        <translation>%1 % - %2 - HxUpdate</translation>
    </message>
</context>
<context>
    <name>UpdatingPage</name>
    <message>
        <source>Progress of the update</source>
        <translation>Fortschritt des Updates</translation>
    </message>
    <message>
        <source>&amp;Stop...</source>
        <translation>&amp;Abbrechen...</translation>
    </message>
    <message>
        <source>This computer cannot be kept from going to sleep by this program. See to it that it stays awake.</source>
        <translation>Dieses Programm kann den Computer nicht am Einschlafen hindern. Sorgen Sie dafür, dass er wach bleibt.</translation>
    </message>
    <message>
        <source>Stopping after the message that is on its way...</source>
        <translation>Abbruch nach der Nachricht, die unterwegs ist...</translation>
    </message>
    <message>
        <source>about %1 left</source>
        <translation>noch etwa %1</translation>
    </message>
    <message>
        <source>%1 is being updated</source>
        <translation>%1 wird aktualisiert</translation>
    </message>
    <message>
        <source>Leave it switched on and connected until the end is told.</source>
        <translation>Lassen Sie es eingeschaltet und angeschlossen, bis das Ende gemeldet wird.</translation>
    </message>
    <message>
        <source>The product is asked who it is.</source>
        <translation>Das Produkt wird gefragt, wer es ist.</translation>
    </message>
    <message>
        <source>Message %1 of %2 was acknowledged.</source>
        <translation>Nachricht %1 von %2 wurde bestätigt.</translation>
    </message>
</context>
<context>
    <name>VerdictPage</name>
    <message>
        <source>&amp;Close</source>
        <translation>&amp;Schließen</translation>
    </message>
    <message>
        <source>&amp;Save record...</source>
        <translation>&amp;Protokoll sichern...</translation>
    </message>
    <message>
        <source>Product</source>
        <translation>Produkt</translation>
    </message>
    <message>
        <source>Serial number</source>
        <translation>Seriennummer</translation>
    </message>
    <message>
        <source>Version before</source>
        <translation>Version zuvor</translation>
    </message>
    <message>
        <source>Version now</source>
        <translation>Version jetzt</translation>
    </message>
    <message>
        <source>State of the product</source>
        <translation>Zustand des Produkts</translation>
    </message>
    <message>
        <source>Success</source>
        <translation>Erfolg</translation>
    </message>
    <message>
        <source>No success</source>
        <translation>Kein Erfolg</translation>
    </message>
    <message>
        <source>&amp;Update another product</source>
        <translation>&amp;Weiteres Produkt</translation>
    </message>
    <message>
        <source>Try &amp;again</source>
        <translation>&amp;Noch einmal</translation>
    </message>
    <message>
        <source>Serial number that answers</source>
        <translation>Seriennummer, die antwortet</translation>
    </message>
    <message>
        <source>Details</source>
        <translation>Einzelheiten (englisch)</translation>
    </message>
</context>
<context>
    <name>VerifyingPage</name>
    <message>
        <source>Verification</source>
        <translation>Nachprüfung</translation>
    </message>
    <message>
        <source>&amp;Stop...</source>
        <translation>&amp;Abbrechen...</translation>
    </message>
    <message>
        <source>%1 is being verified</source>
        <translation>%1 wird nachgeprüft</translation>
    </message>
    <message>
        <source>Everything was sent and acknowledged. The update counts only when these agree:</source>
        <translation>Alles wurde gesendet und bestätigt. Das Update gilt nur, wenn dies übereinstimmt:</translation>
    </message>
    <message>
        <source>The product identifies itself again, with the version of the image.</source>
        <translation>Das Produkt meldet sich wieder, mit der Version des Updates.</translation>
    </message>
    <message>
        <source>The checksum that it has stored is that of the image.</source>
        <translation>Die Prüfsumme, die es gespeichert hat, ist die des Updates.</translation>
    </message>
    <message>
        <source>The checksum of the code that it holds is the same.</source>
        <translation>Die Prüfsumme des Codes, den es enthält, ist dieselbe.</translation>
    </message>
</context>
</TS>
