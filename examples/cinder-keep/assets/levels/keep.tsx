<?xml version="1.0" encoding="UTF-8"?>
<tileset version="1.10" name="keep" tilewidth="16" tileheight="16" tilecount="1472" columns="32">
 <image source="keep.png" width="512" height="736"/>
 <tile id="0" type="torch"><animation><frame tileid="0" duration="140"/><frame tileid="1" duration="140"/><frame tileid="2" duration="140"/><frame tileid="3" duration="140"/></animation></tile>
 <tile id="1" type="torch"></tile>
 <tile id="2" type="torch"></tile>
 <tile id="3" type="torch"></tile>
 <tile id="4" type="torch"></tile>
 <tile id="5" type="banner"></tile>
 <tile id="6" type="banner"></tile>
 <tile id="7" type="banner"></tile>
 <tile id="8" type="banner"></tile>
 <tile id="9" type="barrel"></tile>
 <tile id="10" type="crate"></tile>
 <tile id="11" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="12" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="13" type="wall"></tile>
 <tile id="14" type="wall"></tile>
 <tile id="15" type="wall"></tile>
 <tile id="16" type="wall"></tile>
 <tile id="17" type="wall"></tile>
 <tile id="18" type="wall"></tile>
 <tile id="19" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="20" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="21" type="wall"></tile>
 <tile id="22" type="wall"></tile>
 <tile id="23" type="wall"></tile>
 <tile id="24" type="wall"></tile>
 <tile id="25" type="wall"></tile>
 <tile id="26" type="wall"></tile>
 <tile id="27" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="28" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="29" type="wall"></tile>
 <tile id="30" type="wall"></tile>
 <tile id="31" type="wall"></tile>
 <tile id="32" type="wall"></tile>
 <tile id="33" type="wall"></tile>
 <tile id="34" type="wall"></tile>
 <tile id="35" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="36" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="37" type="wall"></tile>
 <tile id="38" type="wall"></tile>
 <tile id="39" type="wall"></tile>
 <tile id="40" type="wall"></tile>
 <tile id="41" type="wall"></tile>
 <tile id="42" type="wall"></tile>
 <tile id="43" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="44" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="45" type="torchlight"></tile>
 <tile id="46" type="torchlight"></tile>
 <tile id="47" type="torchlight"></tile>
 <tile id="48" type="torchlight"></tile>
 <tile id="49" type="torchlight"></tile>
 <tile id="50" type="torchlight"></tile>
 <tile id="51" type="torchlight"></tile>
 <tile id="52" type="torchlight"></tile>
 <tile id="53" type="torchlight"></tile>
 <tile id="54" type="torchlight"></tile>
 <tile id="55" type="torchlight"></tile>
 <tile id="56" type="torchlight"></tile>
 <tile id="57" type="torchlight"></tile>
 <tile id="58" type="torchlight"></tile>
 <tile id="59" type="torchlight"></tile>
 <tile id="60" type="torchlight"></tile>
 <tile id="61" type="torchlight"></tile>
 <tile id="62" type="torchlight"></tile>
 <tile id="63" type="torchlight"></tile>
 <tile id="64" type="torchlight"></tile>
 <tile id="65" type="torchlight"></tile>
 <tile id="66" type="torchlight"></tile>
 <tile id="67" type="torchlight"></tile>
 <tile id="68" type="torchlight"></tile>
 <tile id="69" type="torchlight"></tile>
 <tile id="70" type="torchlight"></tile>
 <tile id="71" type="torchlight"></tile>
 <tile id="72" type="torchlight"></tile>
 <tile id="73" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="74" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="75" type="torchlight"></tile>
 <tile id="76" type="torchlight"></tile>
 <tile id="77" type="torchlight"></tile>
 <tile id="78" type="torchlight"></tile>
 <tile id="79" type="torchlight"></tile>
 <tile id="80" type="torchlight"></tile>
 <tile id="81" type="torchlight"></tile>
 <tile id="82" type="wall"></tile>
 <tile id="83" type="wall"></tile>
 <tile id="84" type="torchlight"></tile>
 <tile id="85" type="torchlight"></tile>
 <tile id="86" type="torchlight"></tile>
 <tile id="87" type="torchlight"></tile>
 <tile id="88" type="torchlight"></tile>
 <tile id="89" type="torchlight"></tile>
 <tile id="90" type="torchlight"></tile>
 <tile id="91" type="torchlight"></tile>
 <tile id="92" type="torchlight"></tile>
 <tile id="93" type="torchlight"></tile>
 <tile id="94" type="torchlight"></tile>
 <tile id="95" type="torchlight"></tile>
 <tile id="96" type="torchlight"></tile>
 <tile id="97" type="torchlight"></tile>
 <tile id="98" type="torchlight"></tile>
 <tile id="99" type="torchlight"></tile>
 <tile id="100" type="torchlight"></tile>
 <tile id="101" type="torchlight"></tile>
 <tile id="102" type="torchlight"></tile>
 <tile id="103" type="torchlight"></tile>
 <tile id="104" type="torchlight"></tile>
 <tile id="105" type="wall"></tile>
 <tile id="106" type="wall"></tile>
 <tile id="107" type="wall"></tile>
 <tile id="108" type="wall"></tile>
 <tile id="109" type="wall"></tile>
 <tile id="110" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="111" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="112" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="113" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="114" type="wall"></tile>
 <tile id="115" type="wall"></tile>
 <tile id="116" type="wall"></tile>
 <tile id="117" type="wall"></tile>
 <tile id="118" type="wall"></tile>
 <tile id="119" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="120" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="121" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="122" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="123" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="124" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="125" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="126" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="127" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="128" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="129" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="130" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="131" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="132" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="133" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="134" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="135" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="136" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="137" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="138" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="139" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="140" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="141" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="142" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="143" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="144" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="145" type="window"></tile>
 <tile id="146" type="window"></tile>
 <tile id="147" type="window"></tile>
 <tile id="148" type="window"></tile>
 <tile id="149" type="window"></tile>
 <tile id="150" type="window"></tile>
 <tile id="151" type="window"></tile>
 <tile id="152" type="window"></tile>
 <tile id="153" type="window"></tile>
 <tile id="154" type="window"></tile>
 <tile id="155" type="window"></tile>
 <tile id="156" type="window"></tile>
 <tile id="157" type="window"></tile>
 <tile id="158" type="window"></tile>
 <tile id="159" type="window"></tile>
 <tile id="160" type="window"></tile>
 <tile id="161" type="window"></tile>
 <tile id="162" type="window"></tile>
 <tile id="163" type="slit"></tile>
 <tile id="164" type="slit"></tile>
 <tile id="165" type="slit"></tile>
 <tile id="166" type="slit"></tile>
 <tile id="167" type="slit"></tile>
 <tile id="168" type="slit"></tile>
 <tile id="169" type="slit"></tile>
 <tile id="170" type="slit"></tile>
 <tile id="171" type="arch"></tile>
 <tile id="172" type="arch"></tile>
 <tile id="173" type="arch"></tile>
 <tile id="174" type="arch"></tile>
 <tile id="175" type="arch"></tile>
 <tile id="176" type="arch"></tile>
 <tile id="177" type="arch"></tile>
 <tile id="178" type="arch"></tile>
 <tile id="179" type="arch"></tile>
 <tile id="180" type="arch"></tile>
 <tile id="181" type="arch"></tile>
 <tile id="182" type="arch"></tile>
 <tile id="183" type="arch"></tile>
 <tile id="184" type="arch"></tile>
 <tile id="185" type="arch"></tile>
 <tile id="186" type="pillar"></tile>
 <tile id="187" type="pillar"></tile>
 <tile id="188" type="pillar"></tile>
 <tile id="189" type="pillar"></tile>
 <tile id="190" type="pillar"></tile>
 <tile id="191" type="pillar"></tile>
 <tile id="192" type="pillar"></tile>
 <tile id="193" type="pillar"></tile>
 <tile id="194" type="tomb"></tile>
 <tile id="195" type="tomb"></tile>
 <tile id="196" type="tomb"></tile>
 <tile id="197" type="tomb"></tile>
 <tile id="198" type="niche"></tile>
 <tile id="199" type="niche"></tile>
 <tile id="200" type="niche"></tile>
 <tile id="201" type="niche"></tile>
 <tile id="202" type="shelf"></tile>
 <tile id="203" type="shelf"></tile>
 <tile id="204" type="shelf"></tile>
 <tile id="205" type="shelf"></tile>
 <tile id="206" type="shelf"></tile>
 <tile id="207" type="shelf"></tile>
 <tile id="208" type="shelf"></tile>
 <tile id="209" type="shelf"></tile>
 <tile id="210" type="books"></tile>
 <tile id="211" type="books"></tile>
 <tile id="212" type="books"></tile>
 <tile id="213" type="books"></tile>
 <tile id="214" type="books"></tile>
 <tile id="215" type="books"></tile>
 <tile id="216" type="books"></tile>
 <tile id="217" type="books"></tile>
 <tile id="218" type="skull"></tile>
 <tile id="219" type="rubble"></tile>
 <tile id="220" type="rubble"></tile>
 <tile id="221" type="moss"></tile>
 <tile id="222" type="moss"></tile>
 <tile id="223" type="web"></tile>
 <tile id="224" type="chain"></tile>
 <tile id="225" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="226" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="227" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="228" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="229" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="230" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="231" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="232" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="233" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="234" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="235" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="236" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="237" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="238" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="239" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="240" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="241" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="242" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="243" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="244" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="245" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="246" type="wall"></tile>
 <tile id="247" type="wall"></tile>
 <tile id="248" type="wall"></tile>
 <tile id="249" type="wall"></tile>
 <tile id="250" type="wall"></tile>
 <tile id="251" type="wall"></tile>
 <tile id="252" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="253" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="254" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="255" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="256" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="257" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="258" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="259" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="260" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="261" type="wall"></tile>
 <tile id="262" type="torchlight"></tile>
 <tile id="263" type="torchlight"></tile>
 <tile id="264" type="torchlight"></tile>
 <tile id="265" type="wall"></tile>
 <tile id="266" type="wall"></tile>
 <tile id="267" type="wall"></tile>
 <tile id="268" type="wall"></tile>
 <tile id="269" type="wall"></tile>
 <tile id="270" type="wall"></tile>
 <tile id="271" type="torchlight"></tile>
 <tile id="272" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="273" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="274" type="wall"></tile>
 <tile id="275" type="wall"></tile>
 <tile id="276" type="torchlight"></tile>
 <tile id="277" type="torchlight"></tile>
 <tile id="278" type="torchlight"></tile>
 <tile id="279" type="torchlight"></tile>
 <tile id="280" type="torchlight"></tile>
 <tile id="281" type="torchlight"></tile>
 <tile id="282" type="torchlight"></tile>
 <tile id="283" type="torchlight"></tile>
 <tile id="284" type="torchlight"></tile>
 <tile id="285" type="wall"></tile>
 <tile id="286" type="wall"></tile>
 <tile id="287" type="wall"></tile>
 <tile id="288" type="wall"></tile>
 <tile id="289" type="wall"></tile>
 <tile id="290" type="wall"></tile>
 <tile id="291" type="torchlight"></tile>
 <tile id="292" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="293" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="294" type="wall"></tile>
 <tile id="295" type="wall"></tile>
 <tile id="296" type="torchlight"></tile>
 <tile id="297" type="torchlight"></tile>
 <tile id="298" type="torchlight"></tile>
 <tile id="299" type="wall"></tile>
 <tile id="300" type="wall"></tile>
 <tile id="301" type="wall"></tile>
 <tile id="302" type="wall"></tile>
 <tile id="303" type="wall"></tile>
 <tile id="304" type="wall"></tile>
 <tile id="305" type="torchlight"></tile>
 <tile id="306" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="307" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="308" type="wall"></tile>
 <tile id="309" type="wall"></tile>
 <tile id="310" type="torchlight"></tile>
 <tile id="311" type="torchlight"></tile>
 <tile id="312" type="torchlight"></tile>
 <tile id="313" type="wall"></tile>
 <tile id="314" type="wall"></tile>
 <tile id="315" type="wall"></tile>
 <tile id="316" type="wall"></tile>
 <tile id="317" type="wall"></tile>
 <tile id="318" type="wall"></tile>
 <tile id="319" type="torchlight"></tile>
 <tile id="320" type="wall"></tile>
 <tile id="321" type="wall"></tile>
 <tile id="322" type="torchlight"></tile>
 <tile id="323" type="torchlight"></tile>
 <tile id="324" type="torchlight"></tile>
 <tile id="325" type="torchlight"></tile>
 <tile id="326" type="torchlight"></tile>
 <tile id="327" type="torchlight"></tile>
 <tile id="328" type="wall"></tile>
 <tile id="329" type="wall"></tile>
 <tile id="330" type="wall"></tile>
 <tile id="331" type="wall"></tile>
 <tile id="332" type="wall"></tile>
 <tile id="333" type="wall"></tile>
 <tile id="334" type="torchlight"></tile>
 <tile id="335" type="torchlight"></tile>
 <tile id="336" type="wall"></tile>
 <tile id="337" type="wall"></tile>
 <tile id="338" type="torchlight"></tile>
 <tile id="339" type="torchlight"></tile>
 <tile id="340" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="341" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="342" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="343" type="torchlight"></tile>
 <tile id="344" type="wall"></tile>
 <tile id="345" type="wall"></tile>
 <tile id="346" type="wall"></tile>
 <tile id="347" type="wall"></tile>
 <tile id="348" type="wall"></tile>
 <tile id="349" type="wall"></tile>
 <tile id="350" type="torchlight"></tile>
 <tile id="351" type="torchlight"></tile>
 <tile id="352" type="torchlight"></tile>
 <tile id="353" type="torchlight"></tile>
 <tile id="354" type="torchlight"></tile>
 <tile id="355" type="torchlight"></tile>
 <tile id="356" type="torchlight"></tile>
 <tile id="357" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="358" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="359" type="torchlight"></tile>
 <tile id="360" type="torchlight"></tile>
 <tile id="361" type="torchlight"></tile>
 <tile id="362" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="363" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="364" type="torchlight"></tile>
 <tile id="365" type="torchlight"></tile>
 <tile id="366" type="torchlight"></tile>
 <tile id="367" type="torchlight"></tile>
 <tile id="368" type="torchlight"></tile>
 <tile id="369" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="370" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="371" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="372" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="373" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="374" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="375" type="torchlight"></tile>
 <tile id="376" type="wall"></tile>
 <tile id="377" type="wall"></tile>
 <tile id="378" type="wall"></tile>
 <tile id="379" type="wall"></tile>
 <tile id="380" type="wall"></tile>
 <tile id="381" type="wall"></tile>
 <tile id="382" type="wall"></tile>
 <tile id="383" type="wall"></tile>
 <tile id="384" type="torchlight"></tile>
 <tile id="385" type="torchlight"></tile>
 <tile id="386" type="torchlight"></tile>
 <tile id="387" type="torchlight"></tile>
 <tile id="388" type="torchlight"></tile>
 <tile id="389" type="wall"></tile>
 <tile id="390" type="torchlight"></tile>
 <tile id="391" type="torchlight"></tile>
 <tile id="392" type="torchlight"></tile>
 <tile id="393" type="torchlight"></tile>
 <tile id="394" type="torchlight"></tile>
 <tile id="395" type="torchlight"></tile>
 <tile id="396" type="torchlight"></tile>
 <tile id="397" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="398" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="399" type="torchlight"></tile>
 <tile id="400" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="401" type="wall"></tile>
 <tile id="402" type="wall"></tile>
 <tile id="403" type="wall"></tile>
 <tile id="404" type="wall"></tile>
 <tile id="405" type="wall"></tile>
 <tile id="406" type="wall"></tile>
 <tile id="407" type="wall"></tile>
 <tile id="408" type="torchlight"></tile>
 <tile id="409" type="torchlight"></tile>
 <tile id="410" type="torchlight"></tile>
 <tile id="411" type="torchlight"></tile>
 <tile id="412" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="413" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="414" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="415" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="416" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="417" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="418" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="419" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="420" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="421" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="422" type="wall"></tile>
 <tile id="423" type="wall"></tile>
 <tile id="424" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="425" type="wall"></tile>
 <tile id="426" type="wall"></tile>
 <tile id="427" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="428" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="429" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="430" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="431" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="432" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="433" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="434" type="wall"></tile>
 <tile id="435" type="wall"></tile>
 <tile id="436" type="wall"></tile>
 <tile id="437" type="wall"></tile>
 <tile id="438" type="wall"></tile>
 <tile id="439" type="wall"></tile>
 <tile id="440" type="wall"></tile>
 <tile id="441" type="torchlight"></tile>
 <tile id="442" type="torchlight"></tile>
 <tile id="443" type="torchlight"></tile>
 <tile id="444" type="torchlight"></tile>
 <tile id="445" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="446" type="wall"></tile>
 <tile id="447" type="spikes"><objectgroup><object id="1" x="2" y="8" width="12" height="8"/></objectgroup></tile>
 <tile id="448" type="wall"></tile>
 <tile id="449" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="450" type="wall"></tile>
 <tile id="451" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="452" type="wall"></tile>
 <tile id="453" type="wall"></tile>
 <tile id="454" type="wall"></tile>
 <tile id="455" type="wall"></tile>
 <tile id="456" type="wall"></tile>
 <tile id="457" type="wall"></tile>
 <tile id="458" type="wall"></tile>
 <tile id="459" type="torchlight"></tile>
 <tile id="460" type="torchlight"></tile>
 <tile id="461" type="torchlight"></tile>
 <tile id="462" type="torchlight"></tile>
 <tile id="463" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="464" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="465" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="466" type="wall"></tile>
 <tile id="467" type="wall"></tile>
 <tile id="468" type="wall"></tile>
 <tile id="469" type="wall"></tile>
 <tile id="470" type="wall"></tile>
 <tile id="471" type="wall"></tile>
 <tile id="472" type="wall"></tile>
 <tile id="473" type="ledge"><objectgroup><object id="1" x="0" y="0" width="16" height="8"/></objectgroup></tile>
 <tile id="474" type="ledge"><objectgroup><object id="1" x="0" y="0" width="16" height="8"/></objectgroup></tile>
 <tile id="475" type="ledge"><objectgroup><object id="1" x="0" y="0" width="16" height="8"/></objectgroup></tile>
 <tile id="476" type="ledge"><objectgroup><object id="1" x="0" y="0" width="16" height="8"/></objectgroup></tile>
 <tile id="477" type="torchlight"></tile>
 <tile id="478" type="ledge"><objectgroup><object id="1" x="0" y="0" width="16" height="8"/></objectgroup></tile>
 <tile id="479" type="ledge"><objectgroup><object id="1" x="0" y="0" width="16" height="8"/></objectgroup></tile>
 <tile id="480" type="torchlight"></tile>
 <tile id="481" type="torchlight"></tile>
 <tile id="482" type="torchlight"></tile>
 <tile id="483" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="484" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="485" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="486" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="487" type="wall"></tile>
 <tile id="488" type="wall"></tile>
 <tile id="489" type="wall"></tile>
 <tile id="490" type="wall"></tile>
 <tile id="491" type="wall"></tile>
 <tile id="492" type="wall"></tile>
 <tile id="493" type="wall"></tile>
 <tile id="494" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="495" type="wall"></tile>
 <tile id="496" type="torchlight"></tile>
 <tile id="497" type="torchlight"></tile>
 <tile id="498" type="torchlight"></tile>
 <tile id="499" type="torchlight"></tile>
 <tile id="500" type="torchlight"></tile>
 <tile id="501" type="torchlight"></tile>
 <tile id="502" type="torchlight"></tile>
 <tile id="503" type="torchlight"></tile>
 <tile id="504" type="wall"></tile>
 <tile id="505" type="wall"></tile>
 <tile id="506" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="507" type="torchlight"></tile>
 <tile id="508" type="torchlight"></tile>
 <tile id="509" type="torchlight"></tile>
 <tile id="510" type="torchlight"></tile>
 <tile id="511" type="torchlight"></tile>
 <tile id="512" type="torchlight"></tile>
 <tile id="513" type="torchlight"></tile>
 <tile id="514" type="torchlight"></tile>
 <tile id="515" type="wall"></tile>
 <tile id="516" type="ledge"><objectgroup><object id="1" x="0" y="0" width="16" height="8"/></objectgroup></tile>
 <tile id="517" type="ledge"><objectgroup><object id="1" x="0" y="0" width="16" height="8"/></objectgroup></tile>
 <tile id="518" type="ledge"><objectgroup><object id="1" x="0" y="0" width="16" height="8"/></objectgroup></tile>
 <tile id="519" type="ledge"><objectgroup><object id="1" x="0" y="0" width="16" height="8"/></objectgroup></tile>
 <tile id="520" type="wall"></tile>
 <tile id="521" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="522" type="torchlight"></tile>
 <tile id="523" type="torchlight"></tile>
 <tile id="524" type="torchlight"></tile>
 <tile id="525" type="torchlight"></tile>
 <tile id="526" type="torchlight"></tile>
 <tile id="527" type="torchlight"></tile>
 <tile id="528" type="torchlight"></tile>
 <tile id="529" type="torchlight"></tile>
 <tile id="530" type="wall"></tile>
 <tile id="531" type="wall"></tile>
 <tile id="532" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="533" type="torchlight"></tile>
 <tile id="534" type="torchlight"></tile>
 <tile id="535" type="torchlight"></tile>
 <tile id="536" type="torchlight"></tile>
 <tile id="537" type="torchlight"></tile>
 <tile id="538" type="torchlight"></tile>
 <tile id="539" type="torchlight"></tile>
 <tile id="540" type="torchlight"></tile>
 <tile id="541" type="wall"></tile>
 <tile id="542" type="torchlight"></tile>
 <tile id="543" type="torchlight"></tile>
 <tile id="544" type="torchlight"></tile>
 <tile id="545" type="torchlight"></tile>
 <tile id="546" type="torchlight"></tile>
 <tile id="547" type="torchlight"></tile>
 <tile id="548" type="torchlight"></tile>
 <tile id="549" type="torchlight"></tile>
 <tile id="550" type="torchlight"></tile>
 <tile id="551" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="552" type="wall"></tile>
 <tile id="553" type="wall"></tile>
 <tile id="554" type="wall"></tile>
 <tile id="555" type="torchlight"></tile>
 <tile id="556" type="torchlight"></tile>
 <tile id="557" type="torchlight"></tile>
 <tile id="558" type="torchlight"></tile>
 <tile id="559" type="torchlight"></tile>
 <tile id="560" type="torchlight"></tile>
 <tile id="561" type="torchlight"></tile>
 <tile id="562" type="torchlight"></tile>
 <tile id="563" type="torchlight"></tile>
 <tile id="564" type="torchlight"></tile>
 <tile id="565" type="wall"></tile>
 <tile id="566" type="wall"></tile>
 <tile id="567" type="wall"></tile>
 <tile id="568" type="ledge"><objectgroup><object id="1" x="0" y="0" width="16" height="8"/></objectgroup></tile>
 <tile id="569" type="ledge"><objectgroup><object id="1" x="0" y="0" width="16" height="8"/></objectgroup></tile>
 <tile id="570" type="ledge"><objectgroup><object id="1" x="0" y="0" width="16" height="8"/></objectgroup></tile>
 <tile id="571" type="ledge"><objectgroup><object id="1" x="0" y="0" width="16" height="8"/></objectgroup></tile>
 <tile id="572" type="ledge"><objectgroup><object id="1" x="0" y="0" width="16" height="8"/></objectgroup></tile>
 <tile id="573" type="ledge"><objectgroup><object id="1" x="0" y="0" width="16" height="8"/></objectgroup></tile>
 <tile id="574" type="torchlight"></tile>
 <tile id="575" type="wall"></tile>
 <tile id="576" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="577" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="578" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="579" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="580" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="581" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="582" type="torchlight"></tile>
 <tile id="583" type="ledge"><objectgroup><object id="1" x="0" y="0" width="16" height="8"/></objectgroup></tile>
 <tile id="584" type="ledge"><objectgroup><object id="1" x="0" y="0" width="16" height="8"/></objectgroup></tile>
 <tile id="585" type="ledge"><objectgroup><object id="1" x="0" y="0" width="16" height="8"/></objectgroup></tile>
 <tile id="586" type="ledge"><objectgroup><object id="1" x="0" y="0" width="16" height="8"/></objectgroup></tile>
 <tile id="587" type="torchlight"></tile>
 <tile id="588" type="torchlight"></tile>
 <tile id="589" type="torchlight"></tile>
 <tile id="590" type="torchlight"></tile>
 <tile id="591" type="torchlight"></tile>
 <tile id="592" type="wall"></tile>
 <tile id="593" type="wall"></tile>
 <tile id="594" type="torchlight"></tile>
 <tile id="595" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="596" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="597" type="wall"></tile>
 <tile id="598" type="wall"></tile>
 <tile id="599" type="wall"></tile>
 <tile id="600" type="wall"></tile>
 <tile id="601" type="torchlight"></tile>
 <tile id="602" type="torchlight"></tile>
 <tile id="603" type="torchlight"></tile>
 <tile id="604" type="torchlight"></tile>
 <tile id="605" type="torchlight"></tile>
 <tile id="606" type="torchlight"></tile>
 <tile id="607" type="torchlight"></tile>
 <tile id="608" type="torchlight"></tile>
 <tile id="609" type="torchlight"></tile>
 <tile id="610" type="torchlight"></tile>
 <tile id="611" type="wall"></tile>
 <tile id="612" type="wall"></tile>
 <tile id="613" type="torchlight"></tile>
 <tile id="614" type="torchlight"></tile>
 <tile id="615" type="torchlight"></tile>
 <tile id="616" type="torchlight"></tile>
 <tile id="617" type="wall"></tile>
 <tile id="618" type="torchlight"></tile>
 <tile id="619" type="torchlight"></tile>
 <tile id="620" type="torchlight"></tile>
 <tile id="621" type="torchlight"></tile>
 <tile id="622" type="torchlight"></tile>
 <tile id="623" type="torchlight"></tile>
 <tile id="624" type="wall"></tile>
 <tile id="625" type="wall"></tile>
 <tile id="626" type="wall"></tile>
 <tile id="627" type="wall"></tile>
 <tile id="628" type="wall"></tile>
 <tile id="629" type="wall"></tile>
 <tile id="630" type="wall"></tile>
 <tile id="631" type="wall"></tile>
 <tile id="632" type="ledge"><objectgroup><object id="1" x="0" y="0" width="16" height="8"/></objectgroup></tile>
 <tile id="633" type="ledge"><objectgroup><object id="1" x="0" y="0" width="16" height="8"/></objectgroup></tile>
 <tile id="634" type="ledge"><objectgroup><object id="1" x="0" y="0" width="16" height="8"/></objectgroup></tile>
 <tile id="635" type="ledge"><objectgroup><object id="1" x="0" y="0" width="16" height="8"/></objectgroup></tile>
 <tile id="636" type="ledge"><objectgroup><object id="1" x="0" y="0" width="16" height="8"/></objectgroup></tile>
 <tile id="637" type="torchlight"></tile>
 <tile id="638" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="639" type="wall"></tile>
 <tile id="640" type="wall"></tile>
 <tile id="641" type="wall"></tile>
 <tile id="642" type="wall"></tile>
 <tile id="643" type="torchlight"></tile>
 <tile id="644" type="torchlight"></tile>
 <tile id="645" type="torchlight"></tile>
 <tile id="646" type="torchlight"></tile>
 <tile id="647" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="648" type="wall"></tile>
 <tile id="649" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="650" type="wall"></tile>
 <tile id="651" type="wall"></tile>
 <tile id="652" type="wall"></tile>
 <tile id="653" type="wall"></tile>
 <tile id="654" type="torchlight"></tile>
 <tile id="655" type="torchlight"></tile>
 <tile id="656" type="torchlight"></tile>
 <tile id="657" type="torchlight"></tile>
 <tile id="658" type="torchlight"></tile>
 <tile id="659" type="torchlight"></tile>
 <tile id="660" type="torchlight"></tile>
 <tile id="661" type="torchlight"></tile>
 <tile id="662" type="wall"></tile>
 <tile id="663" type="wall"></tile>
 <tile id="664" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="665" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="666" type="torchlight"></tile>
 <tile id="667" type="torchlight"></tile>
 <tile id="668" type="torchlight"></tile>
 <tile id="669" type="wall"></tile>
 <tile id="670" type="wall"></tile>
 <tile id="671" type="wall"></tile>
 <tile id="672" type="wall"></tile>
 <tile id="673" type="torchlight"></tile>
 <tile id="674" type="torchlight"></tile>
 <tile id="675" type="torchlight"></tile>
 <tile id="676" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="677" type="wall"></tile>
 <tile id="678" type="torchlight"></tile>
 <tile id="679" type="torchlight"></tile>
 <tile id="680" type="torchlight"></tile>
 <tile id="681" type="torchlight"></tile>
 <tile id="682" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="683" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="684" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="685" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="686" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="687" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="688" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="689" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="690" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="691" type="torchlight"></tile>
 <tile id="692" type="torchlight"></tile>
 <tile id="693" type="wall"></tile>
 <tile id="694" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="695" type="wall"></tile>
 <tile id="696" type="torchlight"></tile>
 <tile id="697" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="698" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="699" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="700" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="701" type="torchlight"></tile>
 <tile id="702" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="703" type="wall"></tile>
 <tile id="704" type="wall"></tile>
 <tile id="705" type="wall"></tile>
 <tile id="706" type="wall"></tile>
 <tile id="707" type="wall"></tile>
 <tile id="708" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="709" type="wall"></tile>
 <tile id="710" type="wall"></tile>
 <tile id="711" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="712" type="torchlight"></tile>
 <tile id="713" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="714" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="715" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="716" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="717" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="718" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="719" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="720" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="721" type="wall"></tile>
 <tile id="722" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="723" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="724" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="725" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="726" type="torchlight"></tile>
 <tile id="727" type="ledge"><objectgroup><object id="1" x="0" y="0" width="16" height="8"/></objectgroup></tile>
 <tile id="728" type="ledge"><objectgroup><object id="1" x="0" y="0" width="16" height="8"/></objectgroup></tile>
 <tile id="729" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="730" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="731" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="732" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="733" type="wall"></tile>
 <tile id="734" type="wall"></tile>
 <tile id="735" type="torchlight"></tile>
 <tile id="736" type="torchlight"></tile>
 <tile id="737" type="torchlight"></tile>
 <tile id="738" type="torchlight"></tile>
 <tile id="739" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="740" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="741" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="742" type="wall"></tile>
 <tile id="743" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="744" type="wall"></tile>
 <tile id="745" type="wall"></tile>
 <tile id="746" type="wall"></tile>
 <tile id="747" type="ledge"><objectgroup><object id="1" x="0" y="0" width="16" height="8"/></objectgroup></tile>
 <tile id="748" type="ledge"><objectgroup><object id="1" x="0" y="0" width="16" height="8"/></objectgroup></tile>
 <tile id="749" type="torchlight"></tile>
 <tile id="750" type="ledge"><objectgroup><object id="1" x="0" y="0" width="16" height="8"/></objectgroup></tile>
 <tile id="751" type="wall"></tile>
 <tile id="752" type="wall"></tile>
 <tile id="753" type="wall"></tile>
 <tile id="754" type="wall"></tile>
 <tile id="755" type="wall"></tile>
 <tile id="756" type="wall"></tile>
 <tile id="757" type="wall"></tile>
 <tile id="758" type="torchlight"></tile>
 <tile id="759" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="760" type="wall"></tile>
 <tile id="761" type="wall"></tile>
 <tile id="762" type="wall"></tile>
 <tile id="763" type="wall"></tile>
 <tile id="764" type="wall"></tile>
 <tile id="765" type="wall"></tile>
 <tile id="766" type="wall"></tile>
 <tile id="767" type="wall"></tile>
 <tile id="768" type="wall"></tile>
 <tile id="769" type="wall"></tile>
 <tile id="770" type="wall"></tile>
 <tile id="771" type="torchlight"></tile>
 <tile id="772" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="773" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="774" type="wall"></tile>
 <tile id="775" type="wall"></tile>
 <tile id="776" type="wall"></tile>
 <tile id="777" type="wall"></tile>
 <tile id="778" type="wall"></tile>
 <tile id="779" type="wall"></tile>
 <tile id="780" type="wall"></tile>
 <tile id="781" type="ledge"><objectgroup><object id="1" x="0" y="0" width="16" height="8"/></objectgroup></tile>
 <tile id="782" type="ledge"><objectgroup><object id="1" x="0" y="0" width="16" height="8"/></objectgroup></tile>
 <tile id="783" type="ledge"><objectgroup><object id="1" x="0" y="0" width="16" height="8"/></objectgroup></tile>
 <tile id="784" type="ledge"><objectgroup><object id="1" x="0" y="0" width="16" height="8"/></objectgroup></tile>
 <tile id="785" type="wall"></tile>
 <tile id="786" type="wall"></tile>
 <tile id="787" type="wall"></tile>
 <tile id="788" type="wall"></tile>
 <tile id="789" type="ledge"><objectgroup><object id="1" x="0" y="0" width="16" height="8"/></objectgroup></tile>
 <tile id="790" type="ledge"><objectgroup><object id="1" x="0" y="0" width="16" height="8"/></objectgroup></tile>
 <tile id="791" type="ledge"><objectgroup><object id="1" x="0" y="0" width="16" height="8"/></objectgroup></tile>
 <tile id="792" type="torchlight"></tile>
 <tile id="793" type="wall"></tile>
 <tile id="794" type="wall"></tile>
 <tile id="795" type="wall"></tile>
 <tile id="796" type="wall"></tile>
 <tile id="797" type="wall"></tile>
 <tile id="798" type="wall"></tile>
 <tile id="799" type="wall"></tile>
 <tile id="800" type="wall"></tile>
 <tile id="801" type="wall"></tile>
 <tile id="802" type="wall"></tile>
 <tile id="803" type="wall"></tile>
 <tile id="804" type="wall"></tile>
 <tile id="805" type="wall"></tile>
 <tile id="806" type="torchlight"></tile>
 <tile id="807" type="wall"></tile>
 <tile id="808" type="wall"></tile>
 <tile id="809" type="wall"></tile>
 <tile id="810" type="wall"></tile>
 <tile id="811" type="wall"></tile>
 <tile id="812" type="wall"></tile>
 <tile id="813" type="wall"></tile>
 <tile id="814" type="wall"></tile>
 <tile id="815" type="wall"></tile>
 <tile id="816" type="wall"></tile>
 <tile id="817" type="torchlight"></tile>
 <tile id="818" type="torchlight"></tile>
 <tile id="819" type="torchlight"></tile>
 <tile id="820" type="torchlight"></tile>
 <tile id="821" type="wall"></tile>
 <tile id="822" type="wall"></tile>
 <tile id="823" type="wall"></tile>
 <tile id="824" type="wall"></tile>
 <tile id="825" type="wall"></tile>
 <tile id="826" type="wall"></tile>
 <tile id="827" type="wall"></tile>
 <tile id="828" type="wall"></tile>
 <tile id="829" type="wall"></tile>
 <tile id="830" type="ledge"><objectgroup><object id="1" x="0" y="0" width="16" height="8"/></objectgroup></tile>
 <tile id="831" type="ledge"><objectgroup><object id="1" x="0" y="0" width="16" height="8"/></objectgroup></tile>
 <tile id="832" type="ledge"><objectgroup><object id="1" x="0" y="0" width="16" height="8"/></objectgroup></tile>
 <tile id="833" type="ledge"><objectgroup><object id="1" x="0" y="0" width="16" height="8"/></objectgroup></tile>
 <tile id="834" type="ledge"><objectgroup><object id="1" x="0" y="0" width="16" height="8"/></objectgroup></tile>
 <tile id="835" type="torchlight"></tile>
 <tile id="836" type="torchlight"></tile>
 <tile id="837" type="torchlight"></tile>
 <tile id="838" type="torchlight"></tile>
 <tile id="839" type="wall"></tile>
 <tile id="840" type="ledge"><objectgroup><object id="1" x="0" y="0" width="16" height="8"/></objectgroup></tile>
 <tile id="841" type="ledge"><objectgroup><object id="1" x="0" y="0" width="16" height="8"/></objectgroup></tile>
 <tile id="842" type="ledge"><objectgroup><object id="1" x="0" y="0" width="16" height="8"/></objectgroup></tile>
 <tile id="843" type="ledge"><objectgroup><object id="1" x="0" y="0" width="16" height="8"/></objectgroup></tile>
 <tile id="844" type="torchlight"></tile>
 <tile id="845" type="ledge"><objectgroup><object id="1" x="0" y="0" width="16" height="8"/></objectgroup></tile>
 <tile id="846" type="torchlight"></tile>
 <tile id="847" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="848" type="torchlight"></tile>
 <tile id="849" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="850" type="wall"></tile>
 <tile id="851" type="wall"></tile>
 <tile id="852" type="wall"></tile>
 <tile id="853" type="wall"></tile>
 <tile id="854" type="torchlight"></tile>
 <tile id="855" type="torchlight"></tile>
 <tile id="856" type="torchlight"></tile>
 <tile id="857" type="torchlight"></tile>
 <tile id="858" type="torchlight"></tile>
 <tile id="859" type="torchlight"></tile>
 <tile id="860" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="861" type="wall"></tile>
 <tile id="862" type="wall"></tile>
 <tile id="863" type="torchlight"></tile>
 <tile id="864" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="865" type="wall"></tile>
 <tile id="866" type="torchlight"></tile>
 <tile id="867" type="torchlight"></tile>
 <tile id="868" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="869" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="870" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="871" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="872" type="wall"></tile>
 <tile id="873" type="wall"></tile>
 <tile id="874" type="wall"></tile>
 <tile id="875" type="wall"></tile>
 <tile id="876" type="torchlight"></tile>
 <tile id="877" type="torchlight"></tile>
 <tile id="878" type="torchlight"></tile>
 <tile id="879" type="torchlight"></tile>
 <tile id="880" type="torchlight"></tile>
 <tile id="881" type="torchlight"></tile>
 <tile id="882" type="torchlight"></tile>
 <tile id="883" type="torchlight"></tile>
 <tile id="884" type="torchlight"></tile>
 <tile id="885" type="wall"></tile>
 <tile id="886" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="887" type="wall"></tile>
 <tile id="888" type="torchlight"></tile>
 <tile id="889" type="torchlight"></tile>
 <tile id="890" type="torchlight"></tile>
 <tile id="891" type="torchlight"></tile>
 <tile id="892" type="wall"></tile>
 <tile id="893" type="wall"></tile>
 <tile id="894" type="wall"></tile>
 <tile id="895" type="wall"></tile>
 <tile id="896" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="897" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="898" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="899" type="wall"></tile>
 <tile id="900" type="wall"></tile>
 <tile id="901" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="902" type="wall"></tile>
 <tile id="903" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="904" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="905" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="906" type="torchlight"></tile>
 <tile id="907" type="torchlight"></tile>
 <tile id="908" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="909" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="910" type="wall"></tile>
 <tile id="911" type="wall"></tile>
 <tile id="912" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="913" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="914" type="torchlight"></tile>
 <tile id="915" type="torchlight"></tile>
 <tile id="916" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="917" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="918" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="919" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="920" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="921" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="922" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="923" type="column"></tile>
 <tile id="924" type="column"></tile>
 <tile id="925" type="column"></tile>
 <tile id="926" type="column"></tile>
 <tile id="927" type="column"></tile>
 <tile id="928" type="column"></tile>
 <tile id="929" type="throne"></tile>
 <tile id="930" type="throne"></tile>
 <tile id="931" type="throne"></tile>
 <tile id="932" type="throne"></tile>
 <tile id="933" type="throne"></tile>
 <tile id="934" type="throne"></tile>
 <tile id="935" type="throne"></tile>
 <tile id="936" type="throne"></tile>
 <tile id="937" type="throne"></tile>
 <tile id="938" type="torchlight"></tile>
 <tile id="939" type="torchlight"></tile>
 <tile id="940" type="torchlight"></tile>
 <tile id="941" type="wall"></tile>
 <tile id="942" type="wall"></tile>
 <tile id="943" type="wall"></tile>
 <tile id="944" type="wall"></tile>
 <tile id="945" type="wall"></tile>
 <tile id="946" type="wall"></tile>
 <tile id="947" type="wall"></tile>
 <tile id="948" type="wall"></tile>
 <tile id="949" type="wall"></tile>
 <tile id="950" type="wall"></tile>
 <tile id="951" type="wall"></tile>
 <tile id="952" type="wall"></tile>
 <tile id="953" type="wall"></tile>
 <tile id="954" type="wall"></tile>
 <tile id="955" type="wall"></tile>
 <tile id="956" type="wall"></tile>
 <tile id="957" type="wall"></tile>
 <tile id="958" type="wall"></tile>
 <tile id="959" type="wall"></tile>
 <tile id="960" type="wall"></tile>
 <tile id="961" type="wall"></tile>
 <tile id="962" type="wall"></tile>
 <tile id="963" type="wall"></tile>
 <tile id="964" type="wall"></tile>
 <tile id="965" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="966" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="967" type="wall"></tile>
 <tile id="968" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="969" type="wall"></tile>
 <tile id="970" type="torchlight"></tile>
 <tile id="971" type="torchlight"></tile>
 <tile id="972" type="torchlight"></tile>
 <tile id="973" type="torchlight"></tile>
 <tile id="974" type="wall"></tile>
 <tile id="975" type="wall"></tile>
 <tile id="976" type="wall"></tile>
 <tile id="977" type="wall"></tile>
 <tile id="978" type="wall"></tile>
 <tile id="979" type="wall"></tile>
 <tile id="980" type="wall"></tile>
 <tile id="981" type="wall"></tile>
 <tile id="982" type="wall"></tile>
 <tile id="983" type="wall"></tile>
 <tile id="984" type="wall"></tile>
 <tile id="985" type="lava"><objectgroup><object id="1" x="0" y="5" width="16" height="11"/></objectgroup><animation><frame tileid="985" duration="140"/><frame tileid="986" duration="140"/><frame tileid="987" duration="140"/><frame tileid="988" duration="140"/></animation></tile>
 <tile id="986" type="lava"><objectgroup><object id="1" x="0" y="5" width="16" height="11"/></objectgroup></tile>
 <tile id="987" type="lava"><objectgroup><object id="1" x="0" y="5" width="16" height="11"/></objectgroup></tile>
 <tile id="988" type="lava"><objectgroup><object id="1" x="0" y="5" width="16" height="11"/></objectgroup></tile>
 <tile id="989" type="wall"></tile>
 <tile id="990" type="wall"></tile>
 <tile id="991" type="wall"></tile>
 <tile id="992" type="wall"></tile>
 <tile id="993" type="wall"></tile>
 <tile id="994" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="995" type="wall"></tile>
 <tile id="996" type="wall"></tile>
 <tile id="997" type="wall"></tile>
 <tile id="998" type="wall"></tile>
 <tile id="999" type="wall"></tile>
 <tile id="1000" type="wall"></tile>
 <tile id="1001" type="wall"></tile>
 <tile id="1002" type="wall"></tile>
 <tile id="1003" type="wall"></tile>
 <tile id="1004" type="wall"></tile>
 <tile id="1005" type="wall"></tile>
 <tile id="1006" type="wall"></tile>
 <tile id="1007" type="wall"></tile>
 <tile id="1008" type="wall"></tile>
 <tile id="1009" type="wall"></tile>
 <tile id="1010" type="wall"></tile>
 <tile id="1011" type="torchlight"></tile>
 <tile id="1012" type="torchlight"></tile>
 <tile id="1013" type="torchlight"></tile>
 <tile id="1014" type="torchlight"></tile>
 <tile id="1015" type="torchlight"></tile>
 <tile id="1016" type="torchlight"></tile>
 <tile id="1017" type="torchlight"></tile>
 <tile id="1018" type="torchlight"></tile>
 <tile id="1019" type="torchlight"></tile>
 <tile id="1020" type="torchlight"></tile>
 <tile id="1021" type="torchlight"></tile>
 <tile id="1022" type="torchlight"></tile>
 <tile id="1023" type="torchlight"></tile>
 <tile id="1024" type="torchlight"></tile>
 <tile id="1025" type="torchlight"></tile>
 <tile id="1026" type="torchlight"></tile>
 <tile id="1027" type="torchlight"></tile>
 <tile id="1028" type="torchlight"></tile>
 <tile id="1029" type="torchlight"></tile>
 <tile id="1030" type="torchlight"></tile>
 <tile id="1031" type="torchlight"></tile>
 <tile id="1032" type="torchlight"></tile>
 <tile id="1033" type="torchlight"></tile>
 <tile id="1034" type="torchlight"></tile>
 <tile id="1035" type="wall"></tile>
 <tile id="1036" type="wall"></tile>
 <tile id="1037" type="torchlight"></tile>
 <tile id="1038" type="torchlight"></tile>
 <tile id="1039" type="torchlight"></tile>
 <tile id="1040" type="torchlight"></tile>
 <tile id="1041" type="torchlight"></tile>
 <tile id="1042" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="1043" type="wall"></tile>
 <tile id="1044" type="wall"></tile>
 <tile id="1045" type="torchlight"></tile>
 <tile id="1046" type="torchlight"></tile>
 <tile id="1047" type="torchlight"></tile>
 <tile id="1048" type="torchlight"></tile>
 <tile id="1049" type="torchlight"></tile>
 <tile id="1050" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="1051" type="wall"></tile>
 <tile id="1052" type="wall"></tile>
 <tile id="1053" type="torchlight"></tile>
 <tile id="1054" type="torchlight"></tile>
 <tile id="1055" type="torchlight"></tile>
 <tile id="1056" type="torchlight"></tile>
 <tile id="1057" type="torchlight"></tile>
 <tile id="1058" type="wall"></tile>
 <tile id="1059" type="wall"></tile>
 <tile id="1060" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="1061" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="1062" type="wall"></tile>
 <tile id="1063" type="wall"></tile>
 <tile id="1064" type="torchlight"></tile>
 <tile id="1065" type="torchlight"></tile>
 <tile id="1066" type="torchlight"></tile>
 <tile id="1067" type="ledge"><objectgroup><object id="1" x="0" y="0" width="16" height="8"/></objectgroup></tile>
 <tile id="1068" type="torchlight"></tile>
 <tile id="1069" type="ledge"><objectgroup><object id="1" x="0" y="0" width="16" height="8"/></objectgroup></tile>
 <tile id="1070" type="torchlight"></tile>
 <tile id="1071" type="ledge"><objectgroup><object id="1" x="0" y="0" width="16" height="8"/></objectgroup></tile>
 <tile id="1072" type="wall"></tile>
 <tile id="1073" type="wall"></tile>
 <tile id="1074" type="wall"></tile>
 <tile id="1075" type="wall"></tile>
 <tile id="1076" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="1077" type="ledge"><objectgroup><object id="1" x="0" y="0" width="16" height="8"/></objectgroup></tile>
 <tile id="1078" type="ledge"><objectgroup><object id="1" x="0" y="0" width="16" height="8"/></objectgroup></tile>
 <tile id="1079" type="ledge"><objectgroup><object id="1" x="0" y="0" width="16" height="8"/></objectgroup></tile>
 <tile id="1080" type="wall"></tile>
 <tile id="1081" type="wall"></tile>
 <tile id="1082" type="wall"></tile>
 <tile id="1083" type="wall"></tile>
 <tile id="1084" type="wall"></tile>
 <tile id="1085" type="wall"></tile>
 <tile id="1086" type="wall"></tile>
 <tile id="1087" type="wall"></tile>
 <tile id="1088" type="wall"></tile>
 <tile id="1089" type="wall"></tile>
 <tile id="1090" type="wall"></tile>
 <tile id="1091" type="wall"></tile>
 <tile id="1092" type="wall"></tile>
 <tile id="1093" type="wall"></tile>
 <tile id="1094" type="wall"></tile>
 <tile id="1095" type="wall"></tile>
 <tile id="1096" type="wall"></tile>
 <tile id="1097" type="torchlight"></tile>
 <tile id="1098" type="torchlight"></tile>
 <tile id="1099" type="wall"></tile>
 <tile id="1100" type="wall"></tile>
 <tile id="1101" type="wall"></tile>
 <tile id="1102" type="wall"></tile>
 <tile id="1103" type="wall"></tile>
 <tile id="1104" type="wall"></tile>
 <tile id="1105" type="wall"></tile>
 <tile id="1106" type="wall"></tile>
 <tile id="1107" type="wall"></tile>
 <tile id="1108" type="torchlight"></tile>
 <tile id="1109" type="ledge"><objectgroup><object id="1" x="0" y="0" width="16" height="8"/></objectgroup></tile>
 <tile id="1110" type="ledge"><objectgroup><object id="1" x="0" y="0" width="16" height="8"/></objectgroup></tile>
 <tile id="1111" type="ledge"><objectgroup><object id="1" x="0" y="0" width="16" height="8"/></objectgroup></tile>
 <tile id="1112" type="ledge"><objectgroup><object id="1" x="0" y="0" width="16" height="8"/></objectgroup></tile>
 <tile id="1113" type="torchlight"></tile>
 <tile id="1114" type="torchlight"></tile>
 <tile id="1115" type="wall"></tile>
 <tile id="1116" type="wall"></tile>
 <tile id="1117" type="wall"></tile>
 <tile id="1118" type="wall"></tile>
 <tile id="1119" type="wall"></tile>
 <tile id="1120" type="wall"></tile>
 <tile id="1121" type="wall"></tile>
 <tile id="1122" type="wall"></tile>
 <tile id="1123" type="wall"></tile>
 <tile id="1124" type="torchlight"></tile>
 <tile id="1125" type="torchlight"></tile>
 <tile id="1126" type="torchlight"></tile>
 <tile id="1127" type="wall"></tile>
 <tile id="1128" type="wall"></tile>
 <tile id="1129" type="wall"></tile>
 <tile id="1130" type="wall"></tile>
 <tile id="1131" type="wall"></tile>
 <tile id="1132" type="wall"></tile>
 <tile id="1133" type="wall"></tile>
 <tile id="1134" type="wall"></tile>
 <tile id="1135" type="wall"></tile>
 <tile id="1136" type="torchlight"></tile>
 <tile id="1137" type="torchlight"></tile>
 <tile id="1138" type="torchlight"></tile>
 <tile id="1139" type="wall"></tile>
 <tile id="1140" type="wall"></tile>
 <tile id="1141" type="wall"></tile>
 <tile id="1142" type="wall"></tile>
 <tile id="1143" type="wall"></tile>
 <tile id="1144" type="wall"></tile>
 <tile id="1145" type="wall"></tile>
 <tile id="1146" type="wall"></tile>
 <tile id="1147" type="wall"></tile>
 <tile id="1148" type="torchlight"></tile>
 <tile id="1149" type="ledge"><objectgroup><object id="1" x="0" y="0" width="16" height="8"/></objectgroup></tile>
 <tile id="1150" type="ledge"><objectgroup><object id="1" x="0" y="0" width="16" height="8"/></objectgroup></tile>
 <tile id="1151" type="torchlight"></tile>
 <tile id="1152" type="ledge"><objectgroup><object id="1" x="0" y="0" width="16" height="8"/></objectgroup></tile>
 <tile id="1153" type="ledge"><objectgroup><object id="1" x="0" y="0" width="16" height="8"/></objectgroup></tile>
 <tile id="1154" type="torchlight"></tile>
 <tile id="1155" type="torchlight"></tile>
 <tile id="1156" type="wall"></tile>
 <tile id="1157" type="wall"></tile>
 <tile id="1158" type="wall"></tile>
 <tile id="1159" type="torchlight"></tile>
 <tile id="1160" type="torchlight"></tile>
 <tile id="1161" type="torchlight"></tile>
 <tile id="1162" type="torchlight"></tile>
 <tile id="1163" type="torchlight"></tile>
 <tile id="1164" type="wall"></tile>
 <tile id="1165" type="wall"></tile>
 <tile id="1166" type="wall"></tile>
 <tile id="1167" type="wall"></tile>
 <tile id="1168" type="wall"></tile>
 <tile id="1169" type="wall"></tile>
 <tile id="1170" type="wall"></tile>
 <tile id="1171" type="wall"></tile>
 <tile id="1172" type="torchlight"></tile>
 <tile id="1173" type="torchlight"></tile>
 <tile id="1174" type="torchlight"></tile>
 <tile id="1175" type="torchlight"></tile>
 <tile id="1176" type="torchlight"></tile>
 <tile id="1177" type="torchlight"></tile>
 <tile id="1178" type="torchlight"></tile>
 <tile id="1179" type="wall"></tile>
 <tile id="1180" type="wall"></tile>
 <tile id="1181" type="torchlight"></tile>
 <tile id="1182" type="torchlight"></tile>
 <tile id="1183" type="torchlight"></tile>
 <tile id="1184" type="torchlight"></tile>
 <tile id="1185" type="torchlight"></tile>
 <tile id="1186" type="torchlight"></tile>
 <tile id="1187" type="torchlight"></tile>
 <tile id="1188" type="wall"></tile>
 <tile id="1189" type="wall"></tile>
 <tile id="1190" type="torchlight"></tile>
 <tile id="1191" type="torchlight"></tile>
 <tile id="1192" type="torchlight"></tile>
 <tile id="1193" type="torchlight"></tile>
 <tile id="1194" type="torchlight"></tile>
 <tile id="1195" type="torchlight"></tile>
 <tile id="1196" type="torchlight"></tile>
 <tile id="1197" type="torchlight"></tile>
 <tile id="1198" type="torchlight"></tile>
 <tile id="1199" type="torchlight"></tile>
 <tile id="1200" type="torchlight"></tile>
 <tile id="1201" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="1202" type="torchlight"></tile>
 <tile id="1203" type="torchlight"></tile>
 <tile id="1204" type="torchlight"></tile>
 <tile id="1205" type="torchlight"></tile>
 <tile id="1206" type="torchlight"></tile>
 <tile id="1207" type="torchlight"></tile>
 <tile id="1208" type="torchlight"></tile>
 <tile id="1209" type="wall"></tile>
 <tile id="1210" type="wall"></tile>
 <tile id="1211" type="wall"></tile>
 <tile id="1212" type="torchlight"></tile>
 <tile id="1213" type="wall"></tile>
 <tile id="1214" type="wall"></tile>
 <tile id="1215" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="1216" type="wall"></tile>
 <tile id="1217" type="wall"></tile>
 <tile id="1218" type="wall"></tile>
 <tile id="1219" type="wall"></tile>
 <tile id="1220" type="wall"></tile>
 <tile id="1221" type="wall"></tile>
 <tile id="1222" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="1223" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="1224" type="wall"></tile>
 <tile id="1225" type="torchlight"></tile>
 <tile id="1226" type="torchlight"></tile>
 <tile id="1227" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="1228" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="1229" type="torchlight"></tile>
 <tile id="1230" type="torchlight"></tile>
 <tile id="1231" type="torchlight"></tile>
 <tile id="1232" type="torchlight"></tile>
 <tile id="1233" type="wall"></tile>
 <tile id="1234" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="1235" type="wall"></tile>
 <tile id="1236" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="1237" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="1238" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="1239" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="1240" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="1241" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="1242" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="1243" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="1244" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="1245" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="1246" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="1247" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="1248" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="1249" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="1250" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="1251" type="wall"></tile>
 <tile id="1252" type="wall"></tile>
 <tile id="1253" type="wall"></tile>
 <tile id="1254" type="wall"></tile>
 <tile id="1255" type="wall"></tile>
 <tile id="1256" type="wall"></tile>
 <tile id="1257" type="wall"></tile>
 <tile id="1258" type="wall"></tile>
 <tile id="1259" type="wall"></tile>
 <tile id="1260" type="wall"></tile>
 <tile id="1261" type="torchlight"></tile>
 <tile id="1262" type="torchlight"></tile>
 <tile id="1263" type="torchlight"></tile>
 <tile id="1264" type="torchlight"></tile>
 <tile id="1265" type="torchlight"></tile>
 <tile id="1266" type="torchlight"></tile>
 <tile id="1267" type="torchlight"></tile>
 <tile id="1268" type="torchlight"></tile>
 <tile id="1269" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="1270" type="wall"></tile>
 <tile id="1271" type="wall"></tile>
 <tile id="1272" type="wall"></tile>
 <tile id="1273" type="wall"></tile>
 <tile id="1274" type="wall"></tile>
 <tile id="1275" type="wall"></tile>
 <tile id="1276" type="wall"></tile>
 <tile id="1277" type="wall"></tile>
 <tile id="1278" type="wall"></tile>
 <tile id="1279" type="wall"></tile>
 <tile id="1280" type="torchlight"></tile>
 <tile id="1281" type="wall"></tile>
 <tile id="1282" type="wall"></tile>
 <tile id="1283" type="wall"></tile>
 <tile id="1284" type="wall"></tile>
 <tile id="1285" type="wall"></tile>
 <tile id="1286" type="wall"></tile>
 <tile id="1287" type="torchlight"></tile>
 <tile id="1288" type="wall"></tile>
 <tile id="1289" type="wall"></tile>
 <tile id="1290" type="wall"></tile>
 <tile id="1291" type="wall"></tile>
 <tile id="1292" type="wall"></tile>
 <tile id="1293" type="wall"></tile>
 <tile id="1294" type="ledge"><objectgroup><object id="1" x="0" y="0" width="16" height="8"/></objectgroup></tile>
 <tile id="1295" type="ledge"><objectgroup><object id="1" x="0" y="0" width="16" height="8"/></objectgroup></tile>
 <tile id="1296" type="ledge"><objectgroup><object id="1" x="0" y="0" width="16" height="8"/></objectgroup></tile>
 <tile id="1297" type="ledge"><objectgroup><object id="1" x="0" y="0" width="16" height="8"/></objectgroup></tile>
 <tile id="1298" type="torchlight"></tile>
 <tile id="1299" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="1300" type="wall"></tile>
 <tile id="1301" type="wall"></tile>
 <tile id="1302" type="wall"></tile>
 <tile id="1303" type="wall"></tile>
 <tile id="1304" type="wall"></tile>
 <tile id="1305" type="wall"></tile>
 <tile id="1306" type="wall"></tile>
 <tile id="1307" type="torchlight"></tile>
 <tile id="1308" type="wall"></tile>
 <tile id="1309" type="wall"></tile>
 <tile id="1310" type="wall"></tile>
 <tile id="1311" type="wall"></tile>
 <tile id="1312" type="wall"></tile>
 <tile id="1313" type="wall"></tile>
 <tile id="1314" type="wall"></tile>
 <tile id="1315" type="torchlight"></tile>
 <tile id="1316" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="1317" type="wall"></tile>
 <tile id="1318" type="wall"></tile>
 <tile id="1319" type="wall"></tile>
 <tile id="1320" type="wall"></tile>
 <tile id="1321" type="ledge"><objectgroup><object id="1" x="0" y="0" width="16" height="8"/></objectgroup></tile>
 <tile id="1322" type="ledge"><objectgroup><object id="1" x="0" y="0" width="16" height="8"/></objectgroup></tile>
 <tile id="1323" type="ledge"><objectgroup><object id="1" x="0" y="0" width="16" height="8"/></objectgroup></tile>
 <tile id="1324" type="ledge"><objectgroup><object id="1" x="0" y="0" width="16" height="8"/></objectgroup></tile>
 <tile id="1325" type="ledge"><objectgroup><object id="1" x="0" y="0" width="16" height="8"/></objectgroup></tile>
 <tile id="1326" type="wall"></tile>
 <tile id="1327" type="wall"></tile>
 <tile id="1328" type="torchlight"></tile>
 <tile id="1329" type="torchlight"></tile>
 <tile id="1330" type="torchlight"></tile>
 <tile id="1331" type="torchlight"></tile>
 <tile id="1332" type="torchlight"></tile>
 <tile id="1333" type="torchlight"></tile>
 <tile id="1334" type="torchlight"></tile>
 <tile id="1335" type="torchlight"></tile>
 <tile id="1336" type="torchlight"></tile>
 <tile id="1337" type="wall"></tile>
 <tile id="1338" type="wall"></tile>
 <tile id="1339" type="wall"></tile>
 <tile id="1340" type="wall"></tile>
 <tile id="1341" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="1342" type="wall"></tile>
 <tile id="1343" type="wall"></tile>
 <tile id="1344" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="1345" type="wall"></tile>
 <tile id="1346" type="wall"></tile>
 <tile id="1347" type="wall"></tile>
 <tile id="1348" type="wall"></tile>
 <tile id="1349" type="wall"></tile>
 <tile id="1350" type="wall"></tile>
 <tile id="1351" type="wall"></tile>
 <tile id="1352" type="wall"></tile>
 <tile id="1353" type="wall"></tile>
 <tile id="1354" type="wall"></tile>
 <tile id="1355" type="wall"></tile>
 <tile id="1356" type="wall"></tile>
 <tile id="1357" type="ledge"><objectgroup><object id="1" x="0" y="0" width="16" height="8"/></objectgroup></tile>
 <tile id="1358" type="wall"></tile>
 <tile id="1359" type="wall"></tile>
 <tile id="1360" type="wall"></tile>
 <tile id="1361" type="wall"></tile>
 <tile id="1362" type="wall"></tile>
 <tile id="1363" type="wall"></tile>
 <tile id="1364" type="wall"></tile>
 <tile id="1365" type="wall"></tile>
 <tile id="1366" type="wall"></tile>
 <tile id="1367" type="wall"></tile>
 <tile id="1368" type="wall"></tile>
 <tile id="1369" type="wall"></tile>
 <tile id="1370" type="wall"></tile>
 <tile id="1371" type="wall"></tile>
 <tile id="1372" type="wall"></tile>
 <tile id="1373" type="torchlight"></tile>
 <tile id="1374" type="torchlight"></tile>
 <tile id="1375" type="wall"></tile>
 <tile id="1376" type="wall"></tile>
 <tile id="1377" type="wall"></tile>
 <tile id="1378" type="wall"></tile>
 <tile id="1379" type="wall"></tile>
 <tile id="1380" type="wall"></tile>
 <tile id="1381" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="1382" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="1383" type="torchlight"></tile>
 <tile id="1384" type="wall"></tile>
 <tile id="1385" type="torchlight"></tile>
 <tile id="1386" type="torchlight"></tile>
 <tile id="1387" type="torchlight"></tile>
 <tile id="1388" type="torchlight"></tile>
 <tile id="1389" type="torchlight"></tile>
 <tile id="1390" type="torchlight"></tile>
 <tile id="1391" type="wall"></tile>
 <tile id="1392" type="wall"></tile>
 <tile id="1393" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="1394" type="torchlight"></tile>
 <tile id="1395" type="torchlight"></tile>
 <tile id="1396" type="torchlight"></tile>
 <tile id="1397" type="torchlight"></tile>
 <tile id="1398" type="torchlight"></tile>
 <tile id="1399" type="torchlight"></tile>
 <tile id="1400" type="torchlight"></tile>
 <tile id="1401" type="torchlight"></tile>
 <tile id="1402" type="torchlight"></tile>
 <tile id="1403" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="1404" type="torchlight"></tile>
 <tile id="1405" type="torchlight"></tile>
 <tile id="1406" type="torchlight"></tile>
 <tile id="1407" type="wall"></tile>
 <tile id="1408" type="wall"></tile>
 <tile id="1409" type="ground"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="1410" type="wall"></tile>
 <tile id="1411" type="wall"></tile>
 <tile id="1412" type="wall"></tile>
 <tile id="1413" type="wall"></tile>
 <tile id="1414" type="wall"></tile>
 <tile id="1415" type="wall"></tile>
 <tile id="1416" type="ledge"><objectgroup><object id="1" x="0" y="0" width="16" height="8"/></objectgroup></tile>
 <tile id="1417" type="wall"></tile>
 <tile id="1418" type="wall"></tile>
 <tile id="1419" type="torchlight"></tile>
 <tile id="1420" type="torchlight"></tile>
 <tile id="1421" type="wall"></tile>
 <tile id="1422" type="ledge"><objectgroup><object id="1" x="0" y="0" width="16" height="8"/></objectgroup></tile>
 <tile id="1423" type="wall"></tile>
 <tile id="1424" type="wall"></tile>
 <tile id="1425" type="wall"></tile>
 <tile id="1426" type="ledge"><objectgroup><object id="1" x="0" y="0" width="16" height="8"/></objectgroup></tile>
 <tile id="1427" type="ledge"><objectgroup><object id="1" x="0" y="0" width="16" height="8"/></objectgroup></tile>
 <tile id="1428" type="ledge"><objectgroup><object id="1" x="0" y="0" width="16" height="8"/></objectgroup></tile>
 <tile id="1429" type="ledge"><objectgroup><object id="1" x="0" y="0" width="16" height="8"/></objectgroup></tile>
 <tile id="1430" type="torchlight"></tile>
 <tile id="1431" type="torchlight"></tile>
 <tile id="1432" type="torchlight"></tile>
 <tile id="1433" type="torchlight"></tile>
 <tile id="1434" type="torchlight"></tile>
 <tile id="1435" type="torchlight"></tile>
 <tile id="1436" type="torchlight"></tile>
 <tile id="1437" type="torchlight"></tile>
 <tile id="1438" type="torchlight"></tile>
 <tile id="1439" type="torchlight"></tile>
 <tile id="1440" type="wall"></tile>
 <tile id="1441" type="torchlight"></tile>
 <tile id="1442" type="torchlight"></tile>
 <tile id="1443" type="torchlight"></tile>
 <tile id="1444" type="torchlight"></tile>
 <tile id="1445" type="floor"><objectgroup><object id="1" x="0" y="0" width="16" height="16"/></objectgroup></tile>
 <tile id="1446" type="torchlight"></tile>
 <tile id="1447" type="torchlight"></tile>
 <tile id="1448" type="wall"></tile>
 <tile id="1449" type="wall"></tile>
 <tile id="1450" type="wall"></tile>
 <tile id="1451" type="wall"></tile>
 <tile id="1452" type="torchlight"></tile>
 <tile id="1453" type="torchlight"></tile>
 <tile id="1454" type="torchlight"></tile>
 <tile id="1455" type="torchlight"></tile>
 <tile id="1456" type="torchlight"></tile>
 <tile id="1457" type="torchlight"></tile>
 <tile id="1458" type="wall"></tile>
 <tile id="1459" type="torchlight"></tile>
 <tile id="1460" type="torchlight"></tile>
 <tile id="1461" type="wall"></tile>
 <tile id="1462" type="wall"></tile>
 <tile id="1463" type="wall"></tile>
</tileset>
