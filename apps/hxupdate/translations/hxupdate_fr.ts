<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr" sourcelanguage="en">
<context>
    <name>ConditionWords</name>
    <message>
        <source>It answers, and its code is intact.</source>
        <translation>Il répond, et son code est intact.</translation>
    </message>
    <message>
        <source>It answers, and it holds no valid code.</source>
        <translation>Il répond, et il ne contient aucun code valide.</translation>
    </message>
    <message>
        <source>It answers, and its code is damaged.</source>
        <translation>Il répond, et son code est endommagé.</translation>
    </message>
    <message>
        <source>Another product answers in its place.</source>
        <translation>Un autre produit répond à sa place.</translation>
    </message>
    <message>
        <source>It does not answer.</source>
        <translation>Il ne répond pas.</translation>
    </message>
    <message>
        <source>It is no longer connected.</source>
        <translation>Il n’est plus connecté.</translation>
    </message>
    <message>
        <source>It answers only in part.</source>
        <translation>Il ne répond qu’en partie.</translation>
    </message>
</context>
<context>
    <name>ConnectPage</name>
    <message>
        <source>My product is on another &amp;port...</source>
        <translation>Mon produit est sur un autre &amp;port...</translation>
    </message>
    <message>
        <source>&amp;Continue</source>
        <translation>&amp;Continuer</translation>
    </message>
    <message>
        <source>not known</source>
        <translation>non disponible</translation>
    </message>
    <message>
        <source>Product</source>
        <translation>Produit</translation>
    </message>
    <message>
        <source>Serial number</source>
        <translation>Numéro de série</translation>
    </message>
    <message>
        <source>Installed version</source>
        <translation>Version installée</translation>
    </message>
    <message>
        <source>Port</source>
        <translation>Port</translation>
    </message>
    <message>
        <source>Details</source>
        <translation>Détails (en anglais)</translation>
    </message>
    <message>
        <source>none that is valid</source>
        <translation>aucune qui soit valide</translation>
    </message>
</context>
<context>
    <name>ConnectWords</name>
    <message>
        <source>Looking for your product</source>
        <translation>Recherche de votre produit</translation>
    </message>
    <message>
        <source>Each port with the name of a product is asked who is there. Nothing in the product is changed.</source>
        <translation>Chaque port qui porte le nom d’un produit est interrogé. Rien n’est modifié dans le produit.</translation>
    </message>
    <message>
        <source>No device plugin was found</source>
        <translation>Aucun greffon de produit n’a été trouvé</translation>
    </message>
    <message>
        <source>Without the plugin of your product this program does not know how to speak to it.</source>
        <translation>Sans le greffon de votre produit, ce programme ne sait pas comment lui parler.</translation>
    </message>
    <message>
        <source>Install the device plugin of your product.</source>
        <translation>Installez le greffon de votre produit.</translation>
    </message>
    <message>
        <source>Start this program again.</source>
        <translation>Relancez ce programme.</translation>
    </message>
    <message>
        <source>No MIDI port was found</source>
        <translation>Aucun port MIDI n’a été trouvé</translation>
    </message>
    <message>
        <source>This computer has no MIDI port at the moment.</source>
        <translation>Cet ordinateur n’a aucun port MIDI en ce moment.</translation>
    </message>
    <message>
        <source>Connect your product, or the MIDI interface that it is connected to, to this computer.</source>
        <translation>Branchez votre produit, ou l’interface MIDI à laquelle il est relié, à cet ordinateur.</translation>
    </message>
    <message>
        <source>Switch the product on.</source>
        <translation>Allumez le produit.</translation>
    </message>
    <message>
        <source>Wait a moment. A new port is found by itself.</source>
        <translation>Patientez un instant. Un nouveau port est trouvé tout seul.</translation>
    </message>
    <message>
        <source>No product was found</source>
        <translation>Aucun produit n’a été trouvé</translation>
    </message>
    <message>
        <source>There are MIDI ports, but none of them has the name of a product.</source>
        <translation>Il y a des ports MIDI, mais aucun ne porte le nom d’un produit.</translation>
    </message>
    <message>
        <source>Connect your product to this computer and switch it on.</source>
        <translation>Branchez votre produit à cet ordinateur et allumez-le.</translation>
    </message>
    <message>
        <source>If your product is connected through a MIDI interface, press &quot;My product is on another port&quot; and choose it.</source>
        <translation>Si votre produit passe par une interface MIDI, appuyez sur « Mon produit est sur un autre port » et choisissez-la.</translation>
    </message>
    <message>
        <source>The product does not answer</source>
        <translation>Le produit ne répond pas</translation>
    </message>
    <message>
        <source>The port was opened, but nothing answered on it.</source>
        <translation>Le port a été ouvert, mais rien n’y a répondu.</translation>
    </message>
    <message>
        <source>Check that the product is switched on.</source>
        <translation>Vérifiez que le produit est allumé.</translation>
    </message>
    <message>
        <source>Check both MIDI cables, from output to input each.</source>
        <translation>Vérifiez les deux câbles MIDI, chacun d’une sortie vers une entrée.</translation>
    </message>
    <message>
        <source>Switch the product off and on. It is asked again every second.</source>
        <translation>Éteignez et rallumez le produit. Il est interrogé à nouveau chaque seconde.</translation>
    </message>
    <message>
        <source>The product answers only in part</source>
        <translation>Le produit ne répond qu’en partie</translation>
    </message>
    <message>
        <source>Some questions were answered, others were not.</source>
        <translation>Certaines questions ont reçu une réponse, d’autres non.</translation>
    </message>
    <message>
        <source>Close all other programs that use MIDI.</source>
        <translation>Fermez tous les autres programmes qui utilisent le MIDI.</translation>
    </message>
    <message>
        <source>Another product answered</source>
        <translation>Un autre produit a répondu</translation>
    </message>
    <message>
        <source>No device plugin on this computer is made for what answered.</source>
        <translation>Aucun greffon de cet ordinateur n’est fait pour ce qui a répondu.</translation>
    </message>
    <message>
        <source>Disconnect what is connected now.</source>
        <translation>Débranchez ce qui est branché maintenant.</translation>
    </message>
    <message>
        <source>Connect the product that you want to update.</source>
        <translation>Branchez le produit que vous voulez mettre à jour.</translation>
    </message>
    <message>
        <source>If it was the right one, install its device plugin and start this program again.</source>
        <translation>Si c’était le bon, installez son greffon et relancez ce programme.</translation>
    </message>
    <message>
        <source>The port cannot be opened</source>
        <translation>Le port ne peut pas être ouvert</translation>
    </message>
    <message>
        <source>Another program seems to hold it.</source>
        <translation>Un autre programme semble l’utiliser.</translation>
    </message>
    <message>
        <source>Wait a moment. The port is tried again every second.</source>
        <translation>Patientez un instant. Le port est essayé à nouveau chaque seconde.</translation>
    </message>
    <message>
        <source>If that does not help, disconnect the product and connect it again.</source>
        <translation>Si cela ne suffit pas, débranchez le produit et rebranchez-le.</translation>
    </message>
    <message>
        <source>More than one product answered</source>
        <translation>Plusieurs produits ont répondu</translation>
    </message>
    <message>
        <source>So that the right one is updated, only one may answer.</source>
        <translation>Pour que le bon soit mis à jour, un seul doit répondre.</translation>
    </message>
    <message>
        <source>Disconnect all but the one that you want to update.</source>
        <translation>Débranchez tous les produits sauf celui que vous voulez mettre à jour.</translation>
    </message>
    <message>
        <source>Or press &quot;My product is on another port&quot; and choose the port of the right one.</source>
        <translation>Ou appuyez sur « Mon produit est sur un autre port » et choisissez le port du bon.</translation>
    </message>
    <message>
        <source>%1 was found</source>
        <translation>%1 a été trouvé</translation>
    </message>
    <message>
        <source>It answers, and its code is intact.</source>
        <translation>Il répond, et son code est intact.</translation>
    </message>
    <message>
        <source>Press &quot;Continue&quot; if this is the product that you want to update.</source>
        <translation>Appuyez sur « Continuer » si c’est le produit que vous voulez mettre à jour.</translation>
    </message>
    <message>
        <source>%1 has to be recovered</source>
        <translation>%1 doit être récupéré</translation>
    </message>
    <message>
        <source>Leave the product switched on and connected.</source>
        <translation>Laissez le produit allumé et branché.</translation>
    </message>
    <message>
        <source>Press &quot;Continue&quot;.</source>
        <translation>Appuyez sur « Continuer ».</translation>
    </message>
    <message>
        <source>Send the update image again. The update starts afresh.</source>
        <translation>Envoyez à nouveau la mise à jour. Elle recommence du début.</translation>
    </message>
    <message>
        <source>It answers, but it holds no valid code: an update was begun and not finished, or its code is damaged. It can be updated as ever.</source>
        <translation>Il répond, mais ne contient pas de code valide : une mise à jour a été commencée et n’a pas été terminée, ou son code est endommagé. Il peut être mis à jour comme d’habitude.</translation>
    </message>
</context>
<context>
    <name>EndingWords</name>
    <message>
        <source>%1 was updated</source>
        <translation>%1 a été mis à jour</translation>
    </message>
    <message>
        <source>Every message was acknowledged, the checksums agree, and the product answers with the version of the image.</source>
        <translation>Chaque message a été confirmé, les sommes de contrôle concordent, et le produit répond avec la version de la mise à jour.</translation>
    </message>
    <message>
        <source>You can use the product again, or switch it off.</source>
        <translation>Vous pouvez utiliser le produit à nouveau, ou l’éteindre.</translation>
    </message>
    <message>
        <source>The port could not be opened</source>
        <translation>Le port n’a pas pu être ouvert</translation>
    </message>
    <message>
        <source>Nothing was sent: the product is as it was.</source>
        <translation>Rien n’a été envoyé : le produit est tel qu’il était.</translation>
    </message>
    <message>
        <source>Close all other programs that use MIDI.</source>
        <translation>Fermez tous les autres programmes qui utilisent le MIDI.</translation>
    </message>
    <message>
        <source>Check that the product is connected and switched on.</source>
        <translation>Vérifiez que le produit est branché et allumé.</translation>
    </message>
    <message>
        <source>Press &quot;Try again&quot;.</source>
        <translation>Appuyez sur « Réessayer ».</translation>
    </message>
    <message>
        <source>Another unit is connected</source>
        <translation>Un autre exemplaire est branché</translation>
    </message>
    <message>
        <source>Its serial number is not the one that you reviewed. Nothing was sent: the product is as it was.</source>
        <translation>Son numéro de série n’est pas celui que vous avez vérifié. Rien n’a été envoyé : le produit est tel qu’il était.</translation>
    </message>
    <message>
        <source>Connect the unit that you want to update, and no other.</source>
        <translation>Branchez l’exemplaire que vous voulez mettre à jour, et aucun autre.</translation>
    </message>
    <message>
        <source>The update image does not fit</source>
        <translation>La mise à jour ne convient pas</translation>
    </message>
    <message>
        <source>Get the image that is made for this product.</source>
        <translation>Procurez-vous la mise à jour faite pour ce produit.</translation>
    </message>
    <message>
        <source>Press &quot;Try again&quot; and choose it.</source>
        <translation>Appuyez sur « Réessayer » et choisissez-la.</translation>
    </message>
    <message>
        <source>The product does not answer</source>
        <translation>Le produit ne répond pas</translation>
    </message>
    <message>
        <source>Switch it off and on.</source>
        <translation>Éteignez-le et rallumez-le.</translation>
    </message>
    <message>
        <source>Another product answered</source>
        <translation>Un autre produit a répondu</translation>
    </message>
    <message>
        <source>It is not the one that the image is for. Nothing was sent: the product is as it was.</source>
        <translation>La mise à jour n’est pas faite pour lui. Rien n’a été envoyé : le produit est tel qu’il était.</translation>
    </message>
    <message>
        <source>Connect the product that you want to update, and no other.</source>
        <translation>Branchez le produit que vous voulez mettre à jour, et aucun autre.</translation>
    </message>
    <message>
        <source>You stopped the update</source>
        <translation>Vous avez arrêté la mise à jour</translation>
    </message>
    <message>
        <source>Press &quot;Try again&quot; when you want to update it.</source>
        <translation>Appuyez sur « Réessayer » quand vous voudrez le mettre à jour.</translation>
    </message>
    <message>
        <source>The product was disconnected</source>
        <translation>Le produit a été débranché</translation>
    </message>
    <message>
        <source>Connect the product again.</source>
        <translation>Rebranchez le produit.</translation>
    </message>
    <message>
        <source>The product stopped answering</source>
        <translation>Le produit ne répond plus</translation>
    </message>
    <message>
        <source>Check both MIDI cables, and switch the product off and on.</source>
        <translation>Vérifiez les deux câbles MIDI, puis éteignez et rallumez le produit.</translation>
    </message>
    <message>
        <source>Press &quot;Try again&quot;: the product is found again.</source>
        <translation>Appuyez sur « Réessayer » : le produit est retrouvé.</translation>
    </message>
    <message>
        <source>Send the same image. The update starts afresh.</source>
        <translation>Envoyez la même mise à jour. Elle recommence du début.</translation>
    </message>
    <message>
        <source>The product refused the update</source>
        <translation>Le produit a refusé la mise à jour</translation>
    </message>
    <message>
        <source>If it is refused again, save the record and send it to the maker of the product.</source>
        <translation>Si elle est refusée à nouveau, enregistrez le rapport et envoyez-le au fabricant du produit.</translation>
    </message>
    <message>
        <source>Leave the product switched on and connected.</source>
        <translation>Laissez le produit allumé et branché.</translation>
    </message>
    <message>
        <source>The connection was lost</source>
        <translation>La connexion a été perdue</translation>
    </message>
    <message>
        <source>Connect the product again and switch it on.</source>
        <translation>Rebranchez le produit et allumez-le.</translation>
    </message>
    <message>
        <source>The update is not proven</source>
        <translation>La mise à jour n’est pas prouvée</translation>
    </message>
    <message>
        <source>Everything was sent, but the product does not report what it should. Do not take it for updated.</source>
        <translation>Tout a été envoyé, mais le produit n’indique pas ce qu’il devrait. Ne le considérez pas comme mis à jour.</translation>
    </message>
    <message>
        <source>Switch the product off and on.</source>
        <translation>Éteignez et rallumez le produit.</translation>
    </message>
    <message>
        <source>Press &quot;Try again&quot; and send the same image.</source>
        <translation>Appuyez sur « Réessayer » et envoyez la même mise à jour.</translation>
    </message>
    <message>
        <source>If it ends like this again, save the record and send it to the maker of the product.</source>
        <translation>Si cela se termine encore ainsi, enregistrez le rapport et envoyez-le au fabricant du produit.</translation>
    </message>
    <message>
        <source>Another product answered afterwards</source>
        <translation>Un autre produit a répondu ensuite</translation>
    </message>
    <message>
        <source>Another product took its place</source>
        <translation>Un autre produit a pris sa place</translation>
    </message>
    <message>
        <source>Everything was sent, but what answers now is another product. Do not take yours for updated.</source>
        <translation>Tout a été envoyé, mais c’est un autre produit qui répond maintenant. Ne considérez pas le vôtre comme mis à jour.</translation>
    </message>
    <message>
        <source>The update was begun and not finished. Send the image again before you use the product.</source>
        <translation>La mise à jour a été commencée et n’a pas été terminée. Envoyez-la à nouveau avant d’utiliser le produit.</translation>
    </message>
    <message>
        <source>Bytes are lost on the way to the product</source>
        <translation>Des octets se perdent en chemin vers le produit</translation>
    </message>
    <message>
        <source>Use other MIDI cables, or another MIDI interface.</source>
        <translation>Utilisez d’autres câbles MIDI ou une autre interface MIDI.</translation>
    </message>
    <message>
        <source>The update was not acknowledged</source>
        <translation>La mise à jour n’a pas été confirmée</translation>
    </message>
    <message>
        <source>The product holds the code of the image, but it did not acknowledge every message. Send the image again before you use the product.</source>
        <translation>Le produit contient le code de la mise à jour, mais il n’a pas confirmé chaque message. Envoyez-la à nouveau avant d’utiliser le produit.</translation>
    </message>
    <message>
        <source>You stopped the verification</source>
        <translation>Vous avez arrêté le contrôle</translation>
    </message>
    <message>
        <source>Everything was sent, but it was not verified. Do not take it for updated.</source>
        <translation>Tout a été envoyé, mais rien n’a été contrôlé. Ne considérez pas le produit comme mis à jour.</translation>
    </message>
</context>
<context>
    <name>FactList</name>
    <message>
        <source>%1:</source>
        <translation>%1&#xa0;:</translation>
    </message>
</context>
<context>
    <name>FileDialogs</name>
    <message>
        <source>Choose the update image</source>
        <translation>Choisissez la mise à jour</translation>
    </message>
    <message>
        <source>Update images (*.syx *.mid *.hex *.txt)</source>
        <translation>Mises à jour (*.syx *.mid *.hex *.txt)</translation>
    </message>
    <message>
        <source>All files (*)</source>
        <translation>Tous les fichiers (*)</translation>
    </message>
    <message>
        <source>Save the record</source>
        <translation>Enregistrer le rapport</translation>
    </message>
</context>
<context>
    <name>ImagePage</name>
    <message>
        <source>&amp;Back</source>
        <translation>&amp;Retour</translation>
    </message>
    <message>
        <source>Choose &amp;file...</source>
        <translation>Choisir un &amp;fichier...</translation>
    </message>
    <message>
        <source>&amp;Continue</source>
        <translation>&amp;Continuer</translation>
    </message>
    <message>
        <source>Choose the update image</source>
        <translation>Choisissez la mise à jour</translation>
    </message>
    <message>
        <source>It is the file with the new firmware, from the maker of your product.</source>
        <translation>C’est le fichier du nouveau micrologiciel, fourni par le fabricant de votre produit.</translation>
    </message>
    <message>
        <source>Press &quot;Choose file&quot;, or drop the file anywhere on this window.</source>
        <translation>Appuyez sur « Choisir un fichier », ou déposez le fichier n’importe où sur cette fenêtre.</translation>
    </message>
    <message>
        <source>File</source>
        <translation>Fichier</translation>
    </message>
    <message numerus="yes">
        <source>and %n more</source>
        <translation>
            <numerusform>et %n autre</numerusform>
            <numerusform>et %n autres</numerusform>
        </translation>
    </message>
    <message>
        <source>Details</source>
        <translation>Détails (en anglais)</translation>
    </message>
</context>
<context>
    <name>ImageWords</name>
    <message>
        <source>The update image is good</source>
        <translation>La mise à jour est bonne</translation>
    </message>
    <message>
        <source>It is whole, and it is made for %1.</source>
        <translation>Elle est complète, et faite pour %1.</translation>
    </message>
    <message>
        <source>Press &quot;Continue&quot; to see what will be done.</source>
        <translation>Appuyez sur « Continuer » pour voir ce qui sera fait.</translation>
    </message>
    <message>
        <source>This file cannot be checked</source>
        <translation>Ce fichier ne peut pas être vérifié</translation>
    </message>
    <message>
        <source>No device plugin is installed that could tell what is in it.</source>
        <translation>Aucun greffon installé ne peut dire ce qu’il contient.</translation>
    </message>
    <message>
        <source>Install the device plugin of your product.</source>
        <translation>Installez le greffon de votre produit.</translation>
    </message>
    <message>
        <source>Start this program again.</source>
        <translation>Relancez ce programme.</translation>
    </message>
    <message>
        <source>This is a folder</source>
        <translation>C’est un dossier</translation>
    </message>
    <message>
        <source>An update image is one file.</source>
        <translation>Une mise à jour est un seul fichier.</translation>
    </message>
    <message>
        <source>Press &quot;Choose file&quot;, open the folder and choose the file in it.</source>
        <translation>Appuyez sur « Choisir un fichier », ouvrez le dossier et choisissez le fichier qui s’y trouve.</translation>
    </message>
    <message>
        <source>This file cannot be read</source>
        <translation>Ce fichier ne peut pas être lu</translation>
    </message>
    <message>
        <source>It is not there any more, or you may not open it.</source>
        <translation>Il n’est plus là, ou vous n’avez pas le droit de l’ouvrir.</translation>
    </message>
    <message>
        <source>Check that the file is there and that you may open it.</source>
        <translation>Vérifiez que le fichier est là et que vous pouvez l’ouvrir.</translation>
    </message>
    <message>
        <source>Press &quot;Choose file&quot;, or drop the file anywhere on this window.</source>
        <translation>Appuyez sur « Choisir un fichier », ou déposez le fichier n’importe où sur cette fenêtre.</translation>
    </message>
    <message>
        <source>This is a web page</source>
        <translation>C’est une page web</translation>
    </message>
    <message>
        <source>A browser has saved it in the place of the update image.</source>
        <translation>Un navigateur l’a enregistrée à la place de la mise à jour.</translation>
    </message>
    <message>
        <source>Download the file again, from the maker of your product.</source>
        <translation>Téléchargez à nouveau le fichier chez le fabricant de votre produit.</translation>
    </message>
    <message>
        <source>This is an archive</source>
        <translation>C’est une archive</translation>
    </message>
    <message>
        <source>The update image may be in it.</source>
        <translation>La mise à jour s’y trouve peut-être.</translation>
    </message>
    <message>
        <source>Unpack the archive.</source>
        <translation>Décompressez l’archive.</translation>
    </message>
    <message>
        <source>Press &quot;Choose file&quot; and choose the update image that was in it.</source>
        <translation>Appuyez sur « Choisir un fichier » et choisissez la mise à jour qui s’y trouvait.</translation>
    </message>
    <message>
        <source>This is not an update image</source>
        <translation>Ce n’est pas une mise à jour</translation>
    </message>
    <message>
        <source>There is no MIDI message in it.</source>
        <translation>Il ne contient aucun message MIDI.</translation>
    </message>
    <message>
        <source>Get the file again, from the maker of your product.</source>
        <translation>Procurez-vous à nouveau le fichier auprès du fabricant de votre produit.</translation>
    </message>
    <message>
        <source>This image is for another product</source>
        <translation>Cette mise à jour est pour un autre produit</translation>
    </message>
    <message>
        <source>Its messages are for a product of another kind.</source>
        <translation>Ses messages sont destinés à un produit d’un autre type.</translation>
    </message>
    <message>
        <source>Get the image that is made for your product.</source>
        <translation>Procurez-vous la mise à jour faite pour votre produit.</translation>
    </message>
    <message>
        <source>This update image is damaged</source>
        <translation>Cette mise à jour est endommagée</translation>
    </message>
    <message>
        <source>Some of it is missing or was changed.</source>
        <translation>Une partie manque ou a été modifiée.</translation>
    </message>
    <message>
        <source>This image is not signed</source>
        <translation>Cette mise à jour n’est pas signée</translation>
    </message>
    <message>
        <source>The maker of %1 signs images. Who made this one cannot be known.</source>
        <translation>Le fabricant de %1 signe ses mises à jour. L’auteur de celle-ci ne peut pas être établi.</translation>
    </message>
    <message>
        <source>Get the image and its signature, the file that ends with &quot;.minisig&quot;, from the maker of your product.</source>
        <translation>Procurez-vous la mise à jour et sa signature, le fichier qui se termine par « .minisig », auprès du fabricant de votre produit.</translation>
    </message>
    <message>
        <source>Put both into one folder, and choose the image again.</source>
        <translation>Placez les deux dans un même dossier et choisissez à nouveau la mise à jour.</translation>
    </message>
    <message>
        <source>This image is signed by somebody else</source>
        <translation>Cette mise à jour est signée par quelqu’un d’autre</translation>
    </message>
    <message>
        <source>It is not signed with a key of the maker of %1.</source>
        <translation>Elle n’est pas signée avec une clé du fabricant de %1.</translation>
    </message>
    <message>
        <source>This image is not the one that was signed</source>
        <translation>Cette mise à jour n’est pas celle qui a été signée</translation>
    </message>
    <message>
        <source>The image or its signature was changed.</source>
        <translation>La mise à jour ou sa signature a été modifiée.</translation>
    </message>
    <message>
        <source>The signature cannot be checked</source>
        <translation>La signature ne peut pas être vérifiée</translation>
    </message>
    <message>
        <source>The key for images of %1 cannot be used.</source>
        <translation>La clé des mises à jour de %1 est inutilisable.</translation>
    </message>
</context>
<context>
    <name>NoticeWords</name>
    <message>
        <source>The product is no longer connected. Connect it again.</source>
        <translation>Le produit n’est plus branché. Rebranchez-le.</translation>
    </message>
    <message>
        <source>The image %1 is kept for the next update.</source>
        <translation>Le fichier %1 est gardé pour la prochaine mise à jour.</translation>
    </message>
    <message>
        <source>No file can be taken while an update runs.</source>
        <translation>Aucun fichier ne peut être pris pendant une mise à jour.</translation>
    </message>
    <message>
        <source>Drop one file at a time.</source>
        <translation>Déposez un seul fichier à la fois.</translation>
    </message>
    <message>
        <source>The record was saved: %1</source>
        <translation>Le rapport a été enregistré : %1</translation>
    </message>
    <message>
        <source>The record was not saved: %1. Choose another place.</source>
        <translation>Le rapport n’a pas été enregistré : %1. Choisissez un autre endroit.</translation>
    </message>
    <message>
        <source>The file %1 cannot be used.</source>
        <translation>Le fichier %1 ne peut pas être utilisé.</translation>
    </message>
    <message>
        <source>That is not a file on this computer. Download it first, then drop the file.</source>
        <translation>Ce n’est pas un fichier de cet ordinateur. Téléchargez-le d’abord, puis déposez le fichier.</translation>
    </message>
    <message>
        <source>The trace cannot be read. It is damaged in this line: %1</source>
        <translation>La trace ne peut pas être lue. Elle est endommagée à cette ligne : %1</translation>
    </message>
    <message>
        <source>The product is connected again. The update goes on.</source>
        <translation>Le produit est rebranché. La mise à jour continue.</translation>
    </message>
</context>
<context>
    <name>PageWords</name>
    <message>
        <source>What this page says</source>
        <translation>Ce que dit cette page</translation>
    </message>
</context>
<context>
    <name>PortDialog</name>
    <message>
        <source>MIDI ports</source>
        <translation>Ports MIDI</translation>
    </message>
    <message>
        <source>&amp;Ask this port</source>
        <translation>&amp;Interroger ce port</translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation>&amp;Annuler</translation>
    </message>
    <message>
        <source>My product is on another port</source>
        <translation>Mon produit est sur un autre port</translation>
    </message>
    <message>
        <source>Choose the port that your product is connected to. What is connected there is asked who it is; nothing else is sent.</source>
        <translation>Choisissez le port auquel votre produit est branché. Ce qui s’y trouve est interrogé ; rien d’autre n’est envoyé.</translation>
    </message>
</context>
<context>
    <name>ReviewPage</name>
    <message>
        <source>&amp;Back</source>
        <translation>&amp;Retour</translation>
    </message>
    <message>
        <source>Review what will be done</source>
        <translation>Vérifiez ce qui sera fait</translation>
    </message>
    <message>
        <source>Product</source>
        <translation>Produit</translation>
    </message>
    <message>
        <source>Serial number</source>
        <translation>Numéro de série</translation>
    </message>
    <message>
        <source>not known</source>
        <translation>non disponible</translation>
    </message>
    <message>
        <source>Installed version</source>
        <translation>Version installée</translation>
    </message>
    <message>
        <source>none that is valid</source>
        <translation>aucune qui soit valide</translation>
    </message>
    <message>
        <source>Version of the image</source>
        <translation>Version de la mise à jour</translation>
    </message>
    <message>
        <source>Kind of the image</source>
        <translation>Type de la mise à jour</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Taille</translation>
    </message>
    <message numerus="yes">
        <source>%1 in %n message(s)</source>
        <translation>
            <numerusform>%1 en %n message</numerusform>
            <numerusform>%1 en %n messages</numerusform>
        </translation>
    </message>
    <message>
        <source>File</source>
        <translation>Fichier</translation>
    </message>
    <message>
        <source>What it does</source>
        <translation>Effet</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>Durée</translation>
    </message>
    <message>
        <source>about %1</source>
        <translation>environ %1</translation>
    </message>
    <message>
        <source>Nothing has been sent yet. Check that this is what you want.</source>
        <translation>Rien n’a encore été envoyé. Vérifiez que c’est bien ce que vous voulez.</translation>
    </message>
    <message>
        <source>Leave %1 switched on and connected until the end is told.</source>
        <translation>Laissez %1 allumé et branché jusqu’à ce que la fin soit annoncée.</translation>
    </message>
    <message>
        <source>Until then do not play, and do not use other programs that use MIDI.</source>
        <translation>D’ici là, ne jouez pas et n’utilisez pas d’autres programmes MIDI.</translation>
    </message>
    <message>
        <source>Until then do not switch this computer off or close its lid.</source>
        <translation>D’ici là, n’éteignez pas cet ordinateur et ne le refermez pas.</translation>
    </message>
    <message>
        <source>Signature</source>
        <translation>Signature</translation>
    </message>
</context>
<context>
    <name>StepBar</name>
    <message>
        <source>Connect</source>
        <translation>Connexion</translation>
    </message>
    <message>
        <source>Choose image</source>
        <translation>Choix du fichier</translation>
    </message>
    <message>
        <source>Review</source>
        <translation>Vérification</translation>
    </message>
    <message>
        <source>Updating</source>
        <translation>Envoi</translation>
    </message>
    <message>
        <source>Verifying</source>
        <translation>Contrôle</translation>
    </message>
    <message>
        <source>Verdict</source>
        <translation>Résultat</translation>
    </message>
    <message>
        <source>Step %1 of %2: %3</source>
        <translation>Étape %1 sur %2 : %3</translation>
    </message>
</context>
<context>
    <name>StopQuestion</name>
    <message>
        <source>Stop the update?</source>
        <translation>Arrêter la mise à jour ?</translation>
    </message>
    <message>
        <source>The message that is on its way is sent to its end. After that the product may have to be updated before it can be used.</source>
        <translation>Le message en cours est envoyé jusqu’au bout. Ensuite, il se peut que le produit doive être mis à jour avant d’être utilisé.</translation>
    </message>
    <message>
        <source>&amp;Go on updating</source>
        <translation>&amp;Continuer la mise à jour</translation>
    </message>
    <message>
        <source>&amp;Stop the update</source>
        <translation>&amp;Arrêter la mise à jour</translation>
    </message>
</context>
<context>
    <name>TraceTable</name>
    <message>
        <source>Seconds</source>
        <translation>Secondes</translation>
    </message>
    <message>
        <source>Event</source>
        <translation>Événement</translation>
    </message>
    <message>
        <source>Message</source>
        <translation>Message</translation>
    </message>
    <message>
        <source>Bytes or text</source>
        <translation>Octets ou texte</translation>
    </message>
</context>
<context>
    <name>TraceWindow</name>
    <message>
        <source>Trace %1</source>
        <translation>Trace %1</translation>
    </message>
    <message>
        <source>Views of the trace</source>
        <translation>Vues de la trace</translation>
    </message>
    <message>
        <source>&amp;Drawing</source>
        <translation>&amp;Dessin</translation>
    </message>
    <message>
        <source>&amp;Table</source>
        <translation>&amp;Tableau</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>&amp;Fermer</translation>
    </message>
    <message>
        <source>Drawing of the trace; the table has the same in words</source>
        <translation>Dessin de la trace ; le tableau dit la même chose en mots</translation>
    </message>
    <message>
        <source>Drawing of the trace</source>
        <translation>Dessin de la trace</translation>
    </message>
    <message>
        <source>Events of the trace</source>
        <translation>Événements de la trace</translation>
    </message>
</context>
<context>
    <name>UnitWords</name>
    <message numerus="yes">
        <source>%n second(s)</source>
        <translation>
            <numerusform>%n seconde</numerusform>
            <numerusform>%n secondes</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n minute(s)</source>
        <translation>
            <numerusform>%n minute</numerusform>
            <numerusform>%n minutes</numerusform>
        </translation>
    </message>
    <message>
        <source>Upgrade: the image is newer than what is installed</source>
        <translation>Mise à niveau : elle est plus récente que ce qui est installé</translation>
    </message>
    <message>
        <source>Downgrade: the image is older than what is installed</source>
        <translation>Retour en arrière : elle est plus ancienne que ce qui est installé</translation>
    </message>
    <message>
        <source>Reinstall: the image is the version that is installed</source>
        <translation>Réinstallation : c’est la version qui est installée</translation>
    </message>
    <message>
        <source>Recover: no valid code is installed</source>
        <translation>Récupération : aucun code valide n’est installé</translation>
    </message>
    <message>
        <source>&amp;Upgrade %1</source>
        <translation>&amp;Mettre à niveau %1</translation>
    </message>
    <message>
        <source>&amp;Downgrade %1</source>
        <translation>Revenir en &amp;arrière sur %1</translation>
    </message>
    <message>
        <source>&amp;Reinstall %1</source>
        <translation>Réin&amp;staller %1</translation>
    </message>
    <message>
        <source>&amp;Recover %1</source>
        <translation>Ré&amp;cupérer %1</translation>
    </message>
    <message>
        <source>signed with the key %1</source>
        <translation>signée avec la clé %1</translation>
    </message>
    <message>
        <source>not signed: its origin is not known</source>
        <translation>non signée : son origine n’est pas connue</translation>
    </message>
    <message>
        <source>firmware, the first of two kinds (%1)</source>
        <translation>micrologiciel, le premier de deux types (%1)</translation>
    </message>
    <message>
        <source>firmware, the second of two kinds (%1)</source>
        <translation>micrologiciel, le second de deux types (%1)</translation>
    </message>
    <message>
        <source>not known</source>
        <translation>inconnu</translation>
    </message>
</context>
<context>
    <name>UpdateWindow</name>
    <message>
        <source>Simulated product: this is a try. No real product is connected or changed.</source>
        <translation>Produit simulé : ceci est un essai. Aucun vrai produit n’est branché ni modifié.</translation>
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
        <translation>Progression de la mise à jour</translation>
    </message>
    <message>
        <source>&amp;Stop...</source>
        <translation>&amp;Arrêter...</translation>
    </message>
    <message>
        <source>This computer cannot be kept from going to sleep by this program. See to it that it stays awake.</source>
        <translation>Ce programme ne peut pas empêcher l’ordinateur de se mettre en veille. Veillez à ce qu’il reste éveillé.</translation>
    </message>
    <message>
        <source>Stopping after the message that is on its way...</source>
        <translation>Arrêt après le message en cours...</translation>
    </message>
    <message>
        <source>about %1 left</source>
        <translation>encore environ %1</translation>
    </message>
    <message>
        <source>%1 is being updated</source>
        <translation>Mise à jour de %1</translation>
    </message>
    <message>
        <source>Leave it switched on and connected until the end is told.</source>
        <translation>Laissez-le allumé et branché jusqu’à ce que la fin soit annoncée.</translation>
    </message>
    <message>
        <source>The product is asked who it is.</source>
        <translation>Le produit est interrogé.</translation>
    </message>
    <message>
        <source>Message %1 of %2 was acknowledged.</source>
        <translation>Message %1 sur %2 confirmé.</translation>
    </message>
</context>
<context>
    <name>VerdictPage</name>
    <message>
        <source>&amp;Close</source>
        <translation>&amp;Fermer</translation>
    </message>
    <message>
        <source>&amp;Save record...</source>
        <translation>&amp;Enregistrer le rapport...</translation>
    </message>
    <message>
        <source>Product</source>
        <translation>Produit</translation>
    </message>
    <message>
        <source>Serial number</source>
        <translation>Numéro de série</translation>
    </message>
    <message>
        <source>Version before</source>
        <translation>Version précédente</translation>
    </message>
    <message>
        <source>Version now</source>
        <translation>Version actuelle</translation>
    </message>
    <message>
        <source>State of the product</source>
        <translation>État du produit</translation>
    </message>
    <message>
        <source>Success</source>
        <translation>Réussite</translation>
    </message>
    <message>
        <source>No success</source>
        <translation>Échec</translation>
    </message>
    <message>
        <source>&amp;Update another product</source>
        <translation>&amp;Autre produit</translation>
    </message>
    <message>
        <source>Try &amp;again</source>
        <translation>&amp;Réessayer</translation>
    </message>
    <message>
        <source>Serial number that answers</source>
        <translation>Numéro de série qui répond</translation>
    </message>
    <message>
        <source>Details</source>
        <translation>Détails (en anglais)</translation>
    </message>
</context>
<context>
    <name>VerifyingPage</name>
    <message>
        <source>Verification</source>
        <translation>Contrôle</translation>
    </message>
    <message>
        <source>&amp;Stop...</source>
        <translation>&amp;Arrêter...</translation>
    </message>
    <message>
        <source>%1 is being verified</source>
        <translation>Contrôle de %1</translation>
    </message>
    <message>
        <source>Everything was sent and acknowledged. The update counts only when these agree:</source>
        <translation>Tout a été envoyé et confirmé. La mise à jour ne compte que si tout ceci concorde :</translation>
    </message>
    <message>
        <source>The product identifies itself again, with the version of the image.</source>
        <translation>Le produit s’identifie à nouveau, avec la version de la mise à jour.</translation>
    </message>
    <message>
        <source>The checksum that it has stored is that of the image.</source>
        <translation>La somme de contrôle qu’il a enregistrée est celle de la mise à jour.</translation>
    </message>
    <message>
        <source>The checksum of the code that it holds is the same.</source>
        <translation>La somme de contrôle du code qu’il contient est la même.</translation>
    </message>
</context>
</TS>
