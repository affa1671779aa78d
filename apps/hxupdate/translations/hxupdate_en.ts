<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>ImagePage</name>
    <message numerus="yes">
        <source>and %n more</source>
        <translation>
            <numerusform>and %n more</numerusform>
            <numerusform>and %n more</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>ReviewPage</name>
    <message numerus="yes">
        <source>%1 in %n message(s)</source>
        <translation>
            <numerusform>%1 in %n message</numerusform>
            <numerusform>%1 in %n messages</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>UnitWords</name>
    <message numerus="yes">
        <source>%n second(s)</source>
        <translation>
            <numerusform>%n second</numerusform>
            <numerusform>%n seconds</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n minute(s)</source>
        <translation>
            <numerusform>%n minute</numerusform>
            <numerusform>%n minutes</numerusform>
        </translation>
    </message>
</context>
</TS>
