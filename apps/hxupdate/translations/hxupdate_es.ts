<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="es" sourcelanguage="en">
<context>
    <name>ConditionWords</name>
    <message>
        <source>It answers, and its code is intact.</source>
        <translation>Responde, y su código está intacto.</translation>
    </message>
    <message>
        <source>It answers, and it holds no valid code.</source>
        <translation>Responde, y no contiene código válido.</translation>
    </message>
    <message>
        <source>It answers, and its code is damaged.</source>
        <translation>Responde, y su código está dañado.</translation>
    </message>
    <message>
        <source>Another product answers in its place.</source>
        <translation>En su lugar responde otro producto.</translation>
    </message>
    <message>
        <source>It does not answer.</source>
        <translation>No responde.</translation>
    </message>
    <message>
        <source>It is no longer connected.</source>
        <translation>Ya no está conectado.</translation>
    </message>
    <message>
        <source>It answers only in part.</source>
        <translation>Responde solo en parte.</translation>
    </message>
</context>
<context>
    <name>ConnectPage</name>
    <message>
        <source>My product is on another &amp;port...</source>
        <translation>Mi producto está en otro &amp;puerto...</translation>
    </message>
    <message>
        <source>&amp;Continue</source>
        <translation>&amp;Continuar</translation>
    </message>
    <message>
        <source>not known</source>
        <translation>no disponible</translation>
    </message>
    <message>
        <source>Product</source>
        <translation>Producto</translation>
    </message>
    <message>
        <source>Serial number</source>
        <translation>Número de serie</translation>
    </message>
    <message>
        <source>Installed version</source>
        <translation>Versión instalada</translation>
    </message>
    <message>
        <source>Port</source>
        <translation>Puerto</translation>
    </message>
    <message>
        <source>Details</source>
        <translation>Detalles (en inglés)</translation>
    </message>
    <message>
        <source>none that is valid</source>
        <translation>ninguna válida</translation>
    </message>
</context>
<context>
    <name>ConnectWords</name>
    <message>
        <source>Looking for your product</source>
        <translation>Buscando su producto</translation>
    </message>
    <message>
        <source>Each port with the name of a product is asked who is there. Nothing in the product is changed.</source>
        <translation>Se pregunta en cada puerto con el nombre de un producto quién está allí. No se cambia nada en el producto.</translation>
    </message>
    <message>
        <source>No device plugin was found</source>
        <translation>No se encontró ningún complemento de producto</translation>
    </message>
    <message>
        <source>Without the plugin of your product this program does not know how to speak to it.</source>
        <translation>Sin el complemento de su producto, este programa no sabe cómo hablar con él.</translation>
    </message>
    <message>
        <source>Install the device plugin of your product.</source>
        <translation>Instale el complemento de su producto.</translation>
    </message>
    <message>
        <source>Start this program again.</source>
        <translation>Inicie este programa de nuevo.</translation>
    </message>
    <message>
        <source>No MIDI port was found</source>
        <translation>No se encontró ningún puerto MIDI</translation>
    </message>
    <message>
        <source>This computer has no MIDI port at the moment.</source>
        <translation>Este ordenador no tiene ningún puerto MIDI en este momento.</translation>
    </message>
    <message>
        <source>Connect your product, or the MIDI interface that it is connected to, to this computer.</source>
        <translation>Conecte a este ordenador su producto, o la interfaz MIDI a la que está conectado.</translation>
    </message>
    <message>
        <source>Switch the product on.</source>
        <translation>Encienda el producto.</translation>
    </message>
    <message>
        <source>Wait a moment. A new port is found by itself.</source>
        <translation>Espere un momento. Un puerto nuevo se encuentra solo.</translation>
    </message>
    <message>
        <source>No product was found</source>
        <translation>No se encontró ningún producto</translation>
    </message>
    <message>
        <source>There are MIDI ports, but none of them has the name of a product.</source>
        <translation>Hay puertos MIDI, pero ninguno tiene el nombre de un producto.</translation>
    </message>
    <message>
        <source>Connect your product to this computer and switch it on.</source>
        <translation>Conecte su producto a este ordenador y enciéndalo.</translation>
    </message>
    <message>
        <source>If your product is connected through a MIDI interface, press &quot;My product is on another port&quot; and choose it.</source>
        <translation>Si su producto está conectado por una interfaz MIDI, pulse «Mi producto está en otro puerto» y elíjala.</translation>
    </message>
    <message>
        <source>The product does not answer</source>
        <translation>El producto no responde</translation>
    </message>
    <message>
        <source>The port was opened, but nothing answered on it.</source>
        <translation>El puerto se abrió, pero nada respondió en él.</translation>
    </message>
    <message>
        <source>Check that the product is switched on.</source>
        <translation>Compruebe que el producto está encendido.</translation>
    </message>
    <message>
        <source>Check both MIDI cables, from output to input each.</source>
        <translation>Compruebe los dos cables MIDI, cada uno de una salida a una entrada.</translation>
    </message>
    <message>
        <source>Switch the product off and on. It is asked again every second.</source>
        <translation>Apague y encienda el producto. Se le pregunta de nuevo cada segundo.</translation>
    </message>
    <message>
        <source>The product answers only in part</source>
        <translation>El producto responde solo en parte</translation>
    </message>
    <message>
        <source>Some questions were answered, others were not.</source>
        <translation>Algunas preguntas tuvieron respuesta y otras no.</translation>
    </message>
    <message>
        <source>Close all other programs that use MIDI.</source>
        <translation>Cierre todos los demás programas que usan MIDI.</translation>
    </message>
    <message>
        <source>Another product answered</source>
        <translation>Respondió otro producto</translation>
    </message>
    <message>
        <source>No device plugin on this computer is made for what answered.</source>
        <translation>Ningún complemento de este ordenador está hecho para lo que respondió.</translation>
    </message>
    <message>
        <source>Disconnect what is connected now.</source>
        <translation>Desconecte lo que está conectado ahora.</translation>
    </message>
    <message>
        <source>Connect the product that you want to update.</source>
        <translation>Conecte el producto que quiere actualizar.</translation>
    </message>
    <message>
        <source>If it was the right one, install its device plugin and start this program again.</source>
        <translation>Si era el correcto, instale su complemento e inicie este programa de nuevo.</translation>
    </message>
    <message>
        <source>The port cannot be opened</source>
        <translation>El puerto no se puede abrir</translation>
    </message>
    <message>
        <source>Another program seems to hold it.</source>
        <translation>Otro programa parece estar usándolo.</translation>
    </message>
    <message>
        <source>Wait a moment. The port is tried again every second.</source>
        <translation>Espere un momento. El puerto se prueba de nuevo cada segundo.</translation>
    </message>
    <message>
        <source>If that does not help, disconnect the product and connect it again.</source>
        <translation>Si eso no ayuda, desconecte el producto y conéctelo de nuevo.</translation>
    </message>
    <message>
        <source>More than one product answered</source>
        <translation>Respondió más de un producto</translation>
    </message>
    <message>
        <source>So that the right one is updated, only one may answer.</source>
        <translation>Para que se actualice el correcto, solo debe responder uno.</translation>
    </message>
    <message>
        <source>Disconnect all but the one that you want to update.</source>
        <translation>Desconecte todos menos el que quiere actualizar.</translation>
    </message>
    <message>
        <source>Or press &quot;My product is on another port&quot; and choose the port of the right one.</source>
        <translation>O pulse «Mi producto está en otro puerto» y elija el puerto del correcto.</translation>
    </message>
    <message>
        <source>%1 was found</source>
        <translation>Se encontró %1</translation>
    </message>
    <message>
        <source>It answers, and its code is intact.</source>
        <translation>Responde, y su código está intacto.</translation>
    </message>
    <message>
        <source>Press &quot;Continue&quot; if this is the product that you want to update.</source>
        <translation>Pulse «Continuar» si este es el producto que quiere actualizar.</translation>
    </message>
    <message>
        <source>%1 has to be recovered</source>
        <translation>Hay que recuperar %1</translation>
    </message>
    <message>
        <source>Leave the product switched on and connected.</source>
        <translation>Deje el producto encendido y conectado.</translation>
    </message>
    <message>
        <source>Press &quot;Continue&quot;.</source>
        <translation>Pulse «Continuar».</translation>
    </message>
    <message>
        <source>Send the update image again. The update starts afresh.</source>
        <translation>Envíe la actualización otra vez. Empieza desde el principio.</translation>
    </message>
    <message>
        <source>It answers, but it holds no valid code: an update was begun and not finished, or its code is damaged. It can be updated as ever.</source>
        <translation>Responde, pero no contiene código válido: una actualización se empezó y no se terminó, o su código está dañado. Se puede actualizar como siempre.</translation>
    </message>
</context>
<context>
    <name>EndingWords</name>
    <message>
        <source>%1 was updated</source>
        <translation>%1 se actualizó</translation>
    </message>
    <message>
        <source>Every message was acknowledged, the checksums agree, and the product answers with the version of the image.</source>
        <translation>Cada mensaje se confirmó, las sumas de control coinciden y el producto responde con la versión de la actualización.</translation>
    </message>
    <message>
        <source>You can use the product again, or switch it off.</source>
        <translation>Puede usar el producto de nuevo, o apagarlo.</translation>
    </message>
    <message>
        <source>The port could not be opened</source>
        <translation>El puerto no se pudo abrir</translation>
    </message>
    <message>
        <source>Nothing was sent: the product is as it was.</source>
        <translation>No se envió nada: el producto está como estaba.</translation>
    </message>
    <message>
        <source>Close all other programs that use MIDI.</source>
        <translation>Cierre todos los demás programas que usan MIDI.</translation>
    </message>
    <message>
        <source>Check that the product is connected and switched on.</source>
        <translation>Compruebe que el producto está conectado y encendido.</translation>
    </message>
    <message>
        <source>Press &quot;Try again&quot;.</source>
        <translation>Pulse «Intentar de nuevo».</translation>
    </message>
    <message>
        <source>Another unit is connected</source>
        <translation>Está conectada otra unidad</translation>
    </message>
    <message>
        <source>Its serial number is not the one that you reviewed. Nothing was sent: the product is as it was.</source>
        <translation>Su número de serie no es el que usted revisó. No se envió nada: el producto está como estaba.</translation>
    </message>
    <message>
        <source>Connect the unit that you want to update, and no other.</source>
        <translation>Conecte la unidad que quiere actualizar, y ninguna otra.</translation>
    </message>
    <message>
        <source>The update image does not fit</source>
        <translation>La actualización no sirve</translation>
    </message>
    <message>
        <source>Get the image that is made for this product.</source>
        <translation>Consiga la actualización hecha para este producto.</translation>
    </message>
    <message>
        <source>Press &quot;Try again&quot; and choose it.</source>
        <translation>Pulse «Intentar de nuevo» y elíjala.</translation>
    </message>
    <message>
        <source>The product does not answer</source>
        <translation>El producto no responde</translation>
    </message>
    <message>
        <source>Switch it off and on.</source>
        <translation>Apáguelo y enciéndalo.</translation>
    </message>
    <message>
        <source>Another product answered</source>
        <translation>Respondió otro producto</translation>
    </message>
    <message>
        <source>It is not the one that the image is for. Nothing was sent: the product is as it was.</source>
        <translation>La actualización no es para él. No se envió nada: el producto está como estaba.</translation>
    </message>
    <message>
        <source>Connect the product that you want to update, and no other.</source>
        <translation>Conecte el producto que quiere actualizar, y ningún otro.</translation>
    </message>
    <message>
        <source>You stopped the update</source>
        <translation>Usted detuvo la actualización</translation>
    </message>
    <message>
        <source>Press &quot;Try again&quot; when you want to update it.</source>
        <translation>Pulse «Intentar de nuevo» cuando quiera actualizarlo.</translation>
    </message>
    <message>
        <source>The product was disconnected</source>
        <translation>El producto se desconectó</translation>
    </message>
    <message>
        <source>Connect the product again.</source>
        <translation>Conecte el producto de nuevo.</translation>
    </message>
    <message>
        <source>The product stopped answering</source>
        <translation>El producto dejó de responder</translation>
    </message>
    <message>
        <source>Check both MIDI cables, and switch the product off and on.</source>
        <translation>Compruebe los dos cables MIDI, y apague y encienda el producto.</translation>
    </message>
    <message>
        <source>Press &quot;Try again&quot;: the product is found again.</source>
        <translation>Pulse «Intentar de nuevo»: el producto se encuentra otra vez.</translation>
    </message>
    <message>
        <source>Send the same image. The update starts afresh.</source>
        <translation>Envíe la misma actualización. Empieza desde el principio.</translation>
    </message>
    <message>
        <source>The product refused the update</source>
        <translation>El producto rechazó la actualización</translation>
    </message>
    <message>
        <source>If it is refused again, save the record and send it to the maker of the product.</source>
        <translation>Si la rechaza otra vez, guarde el registro y envíelo al fabricante del producto.</translation>
    </message>
    <message>
        <source>Leave the product switched on and connected.</source>
        <translation>Deje el producto encendido y conectado.</translation>
    </message>
    <message>
        <source>The connection was lost</source>
        <translation>Se perdió la conexión</translation>
    </message>
    <message>
        <source>Connect the product again and switch it on.</source>
        <translation>Conecte el producto de nuevo y enciéndalo.</translation>
    </message>
    <message>
        <source>The update is not proven</source>
        <translation>La actualización no está probada</translation>
    </message>
    <message>
        <source>Everything was sent, but the product does not report what it should. Do not take it for updated.</source>
        <translation>Se envió todo, pero el producto no informa lo que debería. No lo dé por actualizado.</translation>
    </message>
    <message>
        <source>Switch the product off and on.</source>
        <translation>Apague y encienda el producto.</translation>
    </message>
    <message>
        <source>Press &quot;Try again&quot; and send the same image.</source>
        <translation>Pulse «Intentar de nuevo» y envíe la misma actualización.</translation>
    </message>
    <message>
        <source>If it ends like this again, save the record and send it to the maker of the product.</source>
        <translation>Si termina así otra vez, guarde el registro y envíelo al fabricante del producto.</translation>
    </message>
    <message>
        <source>Another product answered afterwards</source>
        <translation>Después respondió otro producto</translation>
    </message>
    <message>
        <source>Another product took its place</source>
        <translation>Otro producto ocupó su lugar</translation>
    </message>
    <message>
        <source>Everything was sent, but what answers now is another product. Do not take yours for updated.</source>
        <translation>Se envió todo, pero ahora responde otro producto. No dé el suyo por actualizado.</translation>
    </message>
    <message>
        <source>The update was begun and not finished. Send the image again before you use the product.</source>
        <translation>La actualización se empezó y no se terminó. Envíela de nuevo antes de usar el producto.</translation>
    </message>
    <message>
        <source>Bytes are lost on the way to the product</source>
        <translation>Se pierden bytes en el camino hacia el producto</translation>
    </message>
    <message>
        <source>Use other MIDI cables, or another MIDI interface.</source>
        <translation>Use otros cables MIDI u otra interfaz MIDI.</translation>
    </message>
    <message>
        <source>The update was not acknowledged</source>
        <translation>La actualización no se confirmó</translation>
    </message>
    <message>
        <source>The product holds the code of the image, but it did not acknowledge every message. Send the image again before you use the product.</source>
        <translation>El producto contiene el código de la actualización, pero no confirmó todos los mensajes. Envíela de nuevo antes de usar el producto.</translation>
    </message>
    <message>
        <source>You stopped the verification</source>
        <translation>Usted detuvo la comprobación</translation>
    </message>
    <message>
        <source>Everything was sent, but it was not verified. Do not take it for updated.</source>
        <translation>Se envió todo, pero no se comprobó. No lo dé por actualizado.</translation>
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
        <translation>Elija la actualización</translation>
    </message>
    <message>
        <source>Update images (*.syx *.mid *.hex *.txt)</source>
        <translation>Actualizaciones (*.syx *.mid *.hex *.txt)</translation>
    </message>
    <message>
        <source>All files (*)</source>
        <translation>Todos los archivos (*)</translation>
    </message>
    <message>
        <source>Save the record</source>
        <translation>Guardar el registro</translation>
    </message>
</context>
<context>
    <name>ImagePage</name>
    <message>
        <source>&amp;Back</source>
        <translation>&amp;Atrás</translation>
    </message>
    <message>
        <source>Choose &amp;file...</source>
        <translation>&amp;Elegir archivo...</translation>
    </message>
    <message>
        <source>&amp;Continue</source>
        <translation>&amp;Continuar</translation>
    </message>
    <message>
        <source>Choose the update image</source>
        <translation>Elija la actualización</translation>
    </message>
    <message>
        <source>It is the file with the new firmware, from the maker of your product.</source>
        <translation>Es el archivo con el nuevo firmware, del fabricante de su producto.</translation>
    </message>
    <message>
        <source>Press &quot;Choose file&quot;, or drop the file anywhere on this window.</source>
        <translation>Pulse «Elegir archivo», o suelte el archivo en cualquier parte de esta ventana.</translation>
    </message>
    <message>
        <source>File</source>
        <translation>Archivo</translation>
    </message>
    <message numerus="yes">
        <source>and %n more</source>
        <translation>
            <numerusform>y %n más</numerusform>
            <numerusform>y %n más</numerusform>
        </translation>
    </message>
    <message>
        <source>Details</source>
        <translation>Detalles (en inglés)</translation>
    </message>
</context>
<context>
    <name>ImageWords</name>
    <message>
        <source>The update image is good</source>
        <translation>La actualización está bien</translation>
    </message>
    <message>
        <source>It is whole, and it is made for %1.</source>
        <translation>Está completa, y está hecha para %1.</translation>
    </message>
    <message>
        <source>Press &quot;Continue&quot; to see what will be done.</source>
        <translation>Pulse «Continuar» para ver lo que se hará.</translation>
    </message>
    <message>
        <source>This file cannot be checked</source>
        <translation>Este archivo no se puede comprobar</translation>
    </message>
    <message>
        <source>No device plugin is installed that could tell what is in it.</source>
        <translation>No hay instalado ningún complemento que pueda decir qué contiene.</translation>
    </message>
    <message>
        <source>Install the device plugin of your product.</source>
        <translation>Instale el complemento de su producto.</translation>
    </message>
    <message>
        <source>Start this program again.</source>
        <translation>Inicie este programa de nuevo.</translation>
    </message>
    <message>
        <source>This is a folder</source>
        <translation>Esto es una carpeta</translation>
    </message>
    <message>
        <source>An update image is one file.</source>
        <translation>Una actualización es un solo archivo.</translation>
    </message>
    <message>
        <source>Press &quot;Choose file&quot;, open the folder and choose the file in it.</source>
        <translation>Pulse «Elegir archivo», abra la carpeta y elija el archivo que hay en ella.</translation>
    </message>
    <message>
        <source>This file cannot be read</source>
        <translation>Este archivo no se puede leer</translation>
    </message>
    <message>
        <source>It is not there any more, or you may not open it.</source>
        <translation>Ya no está, o usted no puede abrirlo.</translation>
    </message>
    <message>
        <source>Check that the file is there and that you may open it.</source>
        <translation>Compruebe que el archivo está ahí y que puede abrirlo.</translation>
    </message>
    <message>
        <source>Press &quot;Choose file&quot;, or drop the file anywhere on this window.</source>
        <translation>Pulse «Elegir archivo», o suelte el archivo en cualquier parte de esta ventana.</translation>
    </message>
    <message>
        <source>This is a web page</source>
        <translation>Esto es una página web</translation>
    </message>
    <message>
        <source>A browser has saved it in the place of the update image.</source>
        <translation>Un navegador la guardó en lugar de la actualización.</translation>
    </message>
    <message>
        <source>Download the file again, from the maker of your product.</source>
        <translation>Descargue el archivo otra vez, del fabricante de su producto.</translation>
    </message>
    <message>
        <source>This is an archive</source>
        <translation>Esto es un archivo comprimido</translation>
    </message>
    <message>
        <source>The update image may be in it.</source>
        <translation>Puede que la actualización esté dentro.</translation>
    </message>
    <message>
        <source>Unpack the archive.</source>
        <translation>Descomprímalo.</translation>
    </message>
    <message>
        <source>Press &quot;Choose file&quot; and choose the update image that was in it.</source>
        <translation>Pulse «Elegir archivo» y elija la actualización que había dentro.</translation>
    </message>
    <message>
        <source>This is not an update image</source>
        <translation>Esto no es una actualización</translation>
    </message>
    <message>
        <source>There is no MIDI message in it.</source>
        <translation>No contiene ningún mensaje MIDI.</translation>
    </message>
    <message>
        <source>Get the file again, from the maker of your product.</source>
        <translation>Consiga el archivo otra vez, del fabricante de su producto.</translation>
    </message>
    <message>
        <source>This image is for another product</source>
        <translation>Esta actualización es para otro producto</translation>
    </message>
    <message>
        <source>Its messages are for a product of another kind.</source>
        <translation>Sus mensajes son para un producto de otro tipo.</translation>
    </message>
    <message>
        <source>Get the image that is made for your product.</source>
        <translation>Consiga la actualización hecha para su producto.</translation>
    </message>
    <message>
        <source>This update image is damaged</source>
        <translation>Esta actualización está dañada</translation>
    </message>
    <message>
        <source>Some of it is missing or was changed.</source>
        <translation>Una parte falta o fue modificada.</translation>
    </message>
    <message>
        <source>This image is not signed</source>
        <translation>Esta actualización no está firmada</translation>
    </message>
    <message>
        <source>The maker of %1 signs images. Who made this one cannot be known.</source>
        <translation>El fabricante de %1 firma las actualizaciones. No se puede saber quién hizo esta.</translation>
    </message>
    <message>
        <source>Get the image and its signature, the file that ends with &quot;.minisig&quot;, from the maker of your product.</source>
        <translation>Consiga la actualización y su firma, el archivo que termina en «.minisig», del fabricante de su producto.</translation>
    </message>
    <message>
        <source>Put both into one folder, and choose the image again.</source>
        <translation>Ponga ambos en una carpeta y elija la actualización otra vez.</translation>
    </message>
    <message>
        <source>This image is signed by somebody else</source>
        <translation>Esta actualización está firmada por otra persona</translation>
    </message>
    <message>
        <source>It is not signed with a key of the maker of %1.</source>
        <translation>No está firmada con una clave del fabricante de %1.</translation>
    </message>
    <message>
        <source>This image is not the one that was signed</source>
        <translation>Esta actualización no es la que se firmó</translation>
    </message>
    <message>
        <source>The image or its signature was changed.</source>
        <translation>La actualización o su firma se modificó.</translation>
    </message>
    <message>
        <source>The signature cannot be checked</source>
        <translation>No se puede comprobar la firma</translation>
    </message>
    <message>
        <source>The key for images of %1 cannot be used.</source>
        <translation>La clave de las actualizaciones de %1 no se puede usar.</translation>
    </message>
</context>
<context>
    <name>NoticeWords</name>
    <message>
        <source>The product is no longer connected. Connect it again.</source>
        <translation>El producto ya no está conectado. Conéctelo de nuevo.</translation>
    </message>
    <message>
        <source>The image %1 is kept for the next update.</source>
        <translation>El archivo %1 se guarda para la próxima actualización.</translation>
    </message>
    <message>
        <source>No file can be taken while an update runs.</source>
        <translation>No se puede tomar ningún archivo durante una actualización.</translation>
    </message>
    <message>
        <source>Drop one file at a time.</source>
        <translation>Suelte un solo archivo cada vez.</translation>
    </message>
    <message>
        <source>The record was saved: %1</source>
        <translation>El registro se guardó: %1</translation>
    </message>
    <message>
        <source>The record was not saved: %1. Choose another place.</source>
        <translation>El registro no se guardó: %1. Elija otro lugar.</translation>
    </message>
    <message>
        <source>The file %1 cannot be used.</source>
        <translation>El archivo %1 no se puede usar.</translation>
    </message>
    <message>
        <source>That is not a file on this computer. Download it first, then drop the file.</source>
        <translation>Eso no es un archivo de este ordenador. Descárguelo primero y suelte luego el archivo.</translation>
    </message>
    <message>
        <source>The trace cannot be read. It is damaged in this line: %1</source>
        <translation>La traza no se puede leer. Está dañada en esta línea: %1</translation>
    </message>
    <message>
        <source>The product is connected again. The update goes on.</source>
        <translation>El producto vuelve a estar conectado. La actualización continúa.</translation>
    </message>
</context>
<context>
    <name>PageWords</name>
    <message>
        <source>What this page says</source>
        <translation>Lo que dice esta página</translation>
    </message>
</context>
<context>
    <name>PortDialog</name>
    <message>
        <source>MIDI ports</source>
        <translation>Puertos MIDI</translation>
    </message>
    <message>
        <source>&amp;Ask this port</source>
        <translation>&amp;Preguntar en este puerto</translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation>&amp;Cancelar</translation>
    </message>
    <message>
        <source>My product is on another port</source>
        <translation>Mi producto está en otro puerto</translation>
    </message>
    <message>
        <source>Choose the port that your product is connected to. What is connected there is asked who it is; nothing else is sent.</source>
        <translation>Elija el puerto al que está conectado su producto. Se pregunta a lo que hay allí quién es; no se envía nada más.</translation>
    </message>
</context>
<context>
    <name>ReviewPage</name>
    <message>
        <source>&amp;Back</source>
        <translation>&amp;Atrás</translation>
    </message>
    <message>
        <source>Review what will be done</source>
        <translation>Revise lo que se hará</translation>
    </message>
    <message>
        <source>Product</source>
        <translation>Producto</translation>
    </message>
    <message>
        <source>Serial number</source>
        <translation>Número de serie</translation>
    </message>
    <message>
        <source>not known</source>
        <translation>no disponible</translation>
    </message>
    <message>
        <source>Installed version</source>
        <translation>Versión instalada</translation>
    </message>
    <message>
        <source>none that is valid</source>
        <translation>ninguna válida</translation>
    </message>
    <message>
        <source>Version of the image</source>
        <translation>Versión de la actualización</translation>
    </message>
    <message>
        <source>Kind of the image</source>
        <translation>Tipo de la actualización</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Tamaño</translation>
    </message>
    <message numerus="yes">
        <source>%1 in %n message(s)</source>
        <translation>
            <numerusform>%1 en %n mensaje</numerusform>
            <numerusform>%1 en %n mensajes</numerusform>
        </translation>
    </message>
    <message>
        <source>File</source>
        <translation>Archivo</translation>
    </message>
    <message>
        <source>What it does</source>
        <translation>Qué hace</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>Duración</translation>
    </message>
    <message>
        <source>about %1</source>
        <translation>aprox. %1</translation>
    </message>
    <message>
        <source>Nothing has been sent yet. Check that this is what you want.</source>
        <translation>Aún no se ha enviado nada. Compruebe que esto es lo que quiere.</translation>
    </message>
    <message>
        <source>Leave %1 switched on and connected until the end is told.</source>
        <translation>Deje %1 encendido y conectado hasta que se anuncie el final.</translation>
    </message>
    <message>
        <source>Until then do not play, and do not use other programs that use MIDI.</source>
        <translation>Hasta entonces no toque, y no use otros programas MIDI.</translation>
    </message>
    <message>
        <source>Until then do not switch this computer off or close its lid.</source>
        <translation>Hasta entonces no apague este ordenador ni cierre su tapa.</translation>
    </message>
    <message>
        <source>Signature</source>
        <translation>Firma</translation>
    </message>
</context>
<context>
    <name>StepBar</name>
    <message>
        <source>Connect</source>
        <translation>Conectar</translation>
    </message>
    <message>
        <source>Choose image</source>
        <translation>Elegir archivo</translation>
    </message>
    <message>
        <source>Review</source>
        <translation>Revisar</translation>
    </message>
    <message>
        <source>Updating</source>
        <translation>Enviar</translation>
    </message>
    <message>
        <source>Verifying</source>
        <translation>Comprobar</translation>
    </message>
    <message>
        <source>Verdict</source>
        <translation>Resultado</translation>
    </message>
    <message>
        <source>Step %1 of %2: %3</source>
        <translation>Paso %1 de %2: %3</translation>
    </message>
</context>
<context>
    <name>StopQuestion</name>
    <message>
        <source>Stop the update?</source>
        <translation>¿Detener la actualización?</translation>
    </message>
    <message>
        <source>The message that is on its way is sent to its end. After that the product may have to be updated before it can be used.</source>
        <translation>El mensaje en curso se envía hasta el final. Después, es posible que haya que actualizar el producto antes de usarlo.</translation>
    </message>
    <message>
        <source>&amp;Go on updating</source>
        <translation>&amp;Seguir actualizando</translation>
    </message>
    <message>
        <source>&amp;Stop the update</source>
        <translation>&amp;Detener la actualización</translation>
    </message>
</context>
<context>
    <name>TraceTable</name>
    <message>
        <source>Seconds</source>
        <translation>Segundos</translation>
    </message>
    <message>
        <source>Event</source>
        <translation>Suceso</translation>
    </message>
    <message>
        <source>Message</source>
        <translation>Mensaje</translation>
    </message>
    <message>
        <source>Bytes or text</source>
        <translation>Bytes o texto</translation>
    </message>
</context>
<context>
    <name>TraceWindow</name>
    <message>
        <source>Trace %1</source>
        <translation>Traza %1</translation>
    </message>
    <message>
        <source>Views of the trace</source>
        <translation>Vistas de la traza</translation>
    </message>
    <message>
        <source>&amp;Drawing</source>
        <translation>&amp;Dibujo</translation>
    </message>
    <message>
        <source>&amp;Table</source>
        <translation>&amp;Tabla</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>&amp;Cerrar</translation>
    </message>
    <message>
        <source>Drawing of the trace; the table has the same in words</source>
        <translation>Dibujo de la traza; la tabla dice lo mismo en palabras</translation>
    </message>
    <message>
        <source>Drawing of the trace</source>
        <translation>Dibujo de la traza</translation>
    </message>
    <message>
        <source>Events of the trace</source>
        <translation>Sucesos de la traza</translation>
    </message>
</context>
<context>
    <name>UnitWords</name>
    <message numerus="yes">
        <source>%n second(s)</source>
        <translation>
            <numerusform>%n segundo</numerusform>
            <numerusform>%n segundos</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n minute(s)</source>
        <translation>
            <numerusform>%n minuto</numerusform>
            <numerusform>%n minutos</numerusform>
        </translation>
    </message>
    <message>
        <source>Upgrade: the image is newer than what is installed</source>
        <translation>Actualizar: es más nueva que lo que está instalado</translation>
    </message>
    <message>
        <source>Downgrade: the image is older than what is installed</source>
        <translation>Volver atrás: es más antigua que lo que está instalado</translation>
    </message>
    <message>
        <source>Reinstall: the image is the version that is installed</source>
        <translation>Reinstalar: es la versión que está instalada</translation>
    </message>
    <message>
        <source>Recover: no valid code is installed</source>
        <translation>Recuperar: no hay instalado código válido</translation>
    </message>
    <message>
        <source>&amp;Upgrade %1</source>
        <translation>Ac&amp;tualizar %1</translation>
    </message>
    <message>
        <source>&amp;Downgrade %1</source>
        <translation>&amp;Volver atrás en %1</translation>
    </message>
    <message>
        <source>&amp;Reinstall %1</source>
        <translation>&amp;Reinstalar %1</translation>
    </message>
    <message>
        <source>&amp;Recover %1</source>
        <translation>Re&amp;cuperar %1</translation>
    </message>
    <message>
        <source>signed with the key %1</source>
        <translation>firmada con la clave %1</translation>
    </message>
    <message>
        <source>not signed: its origin is not known</source>
        <translation>sin firmar: su origen no se conoce</translation>
    </message>
    <message>
        <source>firmware, the first of two kinds (%1)</source>
        <translation>firmware, el primero de dos tipos (%1)</translation>
    </message>
    <message>
        <source>firmware, the second of two kinds (%1)</source>
        <translation>firmware, el segundo de dos tipos (%1)</translation>
    </message>
    <message>
        <source>not known</source>
        <translation>no disponible</translation>
    </message>
</context>
<context>
    <name>UpdateWindow</name>
    <message>
        <source>Simulated product: this is a try. No real product is connected or changed.</source>
        <translation>Producto simulado: esto es una prueba. Ningún producto real está conectado ni se cambia.</translation>
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
        <translation>Progreso de la actualización</translation>
    </message>
    <message>
        <source>&amp;Stop...</source>
        <translation>&amp;Detener...</translation>
    </message>
    <message>
        <source>This computer cannot be kept from going to sleep by this program. See to it that it stays awake.</source>
        <translation>Este programa no puede impedir que el ordenador se suspenda. Procure que siga despierto.</translation>
    </message>
    <message>
        <source>Stopping after the message that is on its way...</source>
        <translation>Deteniendo después del mensaje en curso...</translation>
    </message>
    <message>
        <source>about %1 left</source>
        <translation>tiempo restante: aprox. %1</translation>
    </message>
    <message>
        <source>%1 is being updated</source>
        <translation>%1 se está actualizando</translation>
    </message>
    <message>
        <source>Leave it switched on and connected until the end is told.</source>
        <translation>Déjelo encendido y conectado hasta que se anuncie el final.</translation>
    </message>
    <message>
        <source>The product is asked who it is.</source>
        <translation>Se pregunta al producto quién es.</translation>
    </message>
    <message>
        <source>Message %1 of %2 was acknowledged.</source>
        <translation>Mensaje %1 de %2 confirmado.</translation>
    </message>
</context>
<context>
    <name>VerdictPage</name>
    <message>
        <source>&amp;Close</source>
        <translation>&amp;Cerrar</translation>
    </message>
    <message>
        <source>&amp;Save record...</source>
        <translation>&amp;Guardar registro...</translation>
    </message>
    <message>
        <source>Product</source>
        <translation>Producto</translation>
    </message>
    <message>
        <source>Serial number</source>
        <translation>Número de serie</translation>
    </message>
    <message>
        <source>Version before</source>
        <translation>Versión anterior</translation>
    </message>
    <message>
        <source>Version now</source>
        <translation>Versión actual</translation>
    </message>
    <message>
        <source>State of the product</source>
        <translation>Estado del producto</translation>
    </message>
    <message>
        <source>Success</source>
        <translation>Éxito</translation>
    </message>
    <message>
        <source>No success</source>
        <translation>Sin éxito</translation>
    </message>
    <message>
        <source>&amp;Update another product</source>
        <translation>&amp;Otro producto</translation>
    </message>
    <message>
        <source>Try &amp;again</source>
        <translation>&amp;Intentar de nuevo</translation>
    </message>
    <message>
        <source>Serial number that answers</source>
        <translation>Número de serie que responde</translation>
    </message>
    <message>
        <source>Details</source>
        <translation>Detalles (en inglés)</translation>
    </message>
</context>
<context>
    <name>VerifyingPage</name>
    <message>
        <source>Verification</source>
        <translation>Comprobación</translation>
    </message>
    <message>
        <source>&amp;Stop...</source>
        <translation>&amp;Detener...</translation>
    </message>
    <message>
        <source>%1 is being verified</source>
        <translation>%1 se está comprobando</translation>
    </message>
    <message>
        <source>Everything was sent and acknowledged. The update counts only when these agree:</source>
        <translation>Todo se envió y se confirmó. La actualización solo cuenta si esto coincide:</translation>
    </message>
    <message>
        <source>The product identifies itself again, with the version of the image.</source>
        <translation>El producto se identifica otra vez, con la versión de la actualización.</translation>
    </message>
    <message>
        <source>The checksum that it has stored is that of the image.</source>
        <translation>La suma de control que ha guardado es la de la actualización.</translation>
    </message>
    <message>
        <source>The checksum of the code that it holds is the same.</source>
        <translation>La suma de control del código que contiene es la misma.</translation>
    </message>
</context>
</TS>
