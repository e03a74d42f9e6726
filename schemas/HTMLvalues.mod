<!--
  HTMLvalues.mod: lists of values that several schemas of HTML share.

  A list is offered, not enforced: of an open set it names what people choose from.
  None may begin with the name of an attribute that it serves, or the attribute would
  pass for a boolean one (see loose.dtd).
-->

<!-- autocomplete of controls; detail tokens may be combined (shipping street-address). -->
<!ENTITY % AutoFill
  "on | off | name | honorific-prefix | given-name | additional-name | family-name |
   honorific-suffix | nickname | username | new-password | current-password | one-time-code |
   organization-title | organization | street-address | address-line1 | address-line2 |
   address-line3 | address-level4 | address-level3 | address-level2 | address-level1 | country |
   country-name | postal-code | cc-name | cc-given-name | cc-additional-name | cc-family-name |
   cc-number | cc-exp | cc-exp-month | cc-exp-year | cc-csc | cc-type | transaction-currency |
   transaction-amount | language | bday | bday-day | bday-month | bday-year | sex | url |
   photo | tel | tel-country-code | tel-national | tel-area-code | tel-local |
   tel-local-prefix | tel-local-suffix | tel-extension | email | impp | home | work | mobile |
   fax | pager | shipping | billing | webauthn">

<!-- crossorigin; without a value it is anonymous. -->
<!ENTITY % CORS "anonymous | use-credentials">

<!-- method and formmethod. -->
<!ENTITY % EncMethod "get | post | dialog">

<!ENTITY % FetchPriority "high | low | auto">

<!-- lang, hreflang, srclang: the tags that people reach for, of some eight thousand. -->
<!ENTITY % Language
  "en | en-GB | en-US | ar | bg | cs | da | de | el | es | et | fa | fi | fr | he | hi | hr |
   hu | id | it | ja | ko | lt | lv | nl | no | pl | pt | pt-BR | ro | ru | sk | sl | sr | sv |
   th | tr | uk | vi | zh-Hans | zh-Hant">

<!-- rel of a and area. -->
<!ENTITY % LinkRel
  "alternate | author | bookmark | external | help | license | me | next | nofollow | noopener |
   noreferrer | opener | prev | privacy-policy | search | tag | terms-of-service">

<!ENTITY % Loading "lazy | eager">

<!-- media: the media types; the rest of a query is typed. -->
<!ENTITY % MediaDesc
  "all | screen | print | speech | projection | handheld | tv | tty | braille | embossed | aural">

<!ENTITY % ReferrerPolicy
  "no-referrer | no-referrer-when-downgrade | same-origin | origin | strict-origin |
   origin-when-cross-origin | strict-origin-when-cross-origin | unsafe-url">

<!ENTITY % Shape "rect | circle | poly | default">

<!-- target, formtarget: the reserved names; frames and windows have names of their own. -->
<!ENTITY % Target "_blank | _self | _parent | _top">

<!-- align of rows and cells. -->
<!ENTITY % CellHAlign "left | center | right | justify | char">

<!ENTITY % CellVAlign "top | middle | bottom | baseline">

<!-- align of blocks. -->
<!ENTITY % BlockAlign "left | center | right | justify">

<!-- align of images and other embedded things. -->
<!ENTITY % FloatAlign "top | middle | bottom | left | right">

<!-- rel and rev in HTML 4.01. -->
<!ENTITY % LinkType4
  "alternate | stylesheet | start | next | prev | contents | index | glossary | copyright |
   chapter | section | subsection | appendix | help | bookmark">

<!ENTITY % TableFrame "void | above | below | hsides | lhs | rhs | vsides | box | border">

<!ENTITY % TableRules "none | groups | rows | cols | all">
