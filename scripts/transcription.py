"""Writes names of places in Russian letters by the practical transcription of their language.

A language is a list of rules. A rule "before<core>after=letters" replaces the letters `core` of a lower-case word
between what matches `before` and `after`; both may be missing, and `#` is the beginning or the end of the word. Capital
letters stand for the classes of letters that the language defines. At every letter the first rule that fits is used. A
word with a letter that no rule fits is not of the language, and the name has no transcription.
"""

import re
import unicodedata

# A letter that meets itself in a compound.
THRICE = re.compile(r"(.)\1\1")
# The letters that most languages have in common.
PLAIN = "a=а b=б d=д f=ф k=к m=м n=н o=о p=п r=р t=т v=в "


class Language:
    """The rules of a language, and the words that begin with a small letter inside a name."""

    def __init__(self, rules, classes=None, small="", words=""):
        self.small = set(small.split())
        self.words = dict(pair.split("=") for pair in words.split())
        self.rules = []
        for rule in rules.split():
            pattern, _, letters = rule.rpartition("=")
            for name, members in (classes or {}).items():
                pattern = pattern.replace(f"[{name}", f"[{members}").replace(name, f"[{members}]")
            before, core, after = re.fullmatch(r"(?:(.*)<)?([^<>]*)(?:>(.*))?", pattern).groups()
            self.rules.append((re.compile((f"(?<={before})" if before else "") + core
                                          + (f"(?={after})" if after else "")), letters))

    def word(self, word):
        """Returns a lower-case word in small Russian letters, or None."""
        if word in self.words:
            return self.words[word]
        padded, result, at = f"#{word}#", "", 1
        while at <= len(word):
            for pattern, letters in self.rules:
                match = pattern.match(padded, at)
                if match and match.end() > at:
                    result, at = result + letters, match.end()
                    break
            else:
                return None
        return result

    def name(self, name):
        """Returns the name in Russian letters, its words joined with hyphens, or None."""
        name = unicodedata.normalize("NFC", name).replace("’", "'")
        result = ""
        for word in re.findall(r"[^ '-]+'?", name):
            written = self.word(word.lower().removesuffix("'"))
            # An abbreviation or a Roman number is not read as a word.
            if not written or not word[0].isalpha() or (word.isupper() and len(word) > 1):
                return None
            if result and result[-1] != "’":
                result += "-"
            is_small = result and word in self.small
            result += (written if is_small else written[0].upper() + written[1:]) + ("’" if word[-1] == "'" else "")
        return None if THRICE.search(result) else result or None


ITALIAN = Language("""
    glia=лья glià=лья gliu=лью glio=льо gliò=льо glie=лье gli=льи
    gna=нья gnà=нья gne=нье gné=нье gnè=нье gni=ньи gnì=ньи gno=ньо gnò=ньо gnu=нью gnù=нью
    sci>[aàoòuù]=ш sc>[eièéì]=ш cch=кк cci>[aàoòuù]=чч cc>[eièéì]=чч ci>[aàoòuù]=ч c>[eièéì]=ч ch=к cq=кк c=к
    ggi>[aàoòuù]=дж gg>[eièéì]=дж gi>[aàoòuù]=дж g>[eièéì]=дж gh=г g=г qu=кв
    ss=сс V<s>V=з s=с zz=цц #<z=дз z=ц l>V=л ll>V=лл ll=лль l>l=л l=ль h=
    ja=я je=йе jo=йо ju=ю j=й
    V<ia=я V<ie=йе V<io=йо V<iu=ю V<i>[lnrtsdcbgmpvfzq]=й [pbfh]<ie=ье ie=ие ia>#=ия [h]<ia=ья [pbf]<ia=ья [pbfh]<io>[lnrtsdcbgmpvfz]=ьо ia>#=ия
    i=и ì=и u=у ù=у #<[eèé]=э [aàoòuù]<[eèé]=э [eèé]=е [à]=а [òó]=о
    """ + PLAIN, {"V": "aàeèéiìoòóuù"},
    "a ad al alla allo alle ai agli all' d' da dal dalla dei del della dello dell' delle degli di e ed in nel nella nell' "
    "con per su sul sulla sull' lo la le il i")

SPANISH = Language("""
    ch=ч lla=лья llá=лья lle=лье llé=лье lli=льи llí=льи llo=льо lló=льо llu=лью llú=лью ll=ль
    ña=нья ñá=нья ñe=нье ñé=нье ñi=ньи ñí=ньи ño=ньо ñó=ньо ñu=нью ñú=нью
    j=х g>[eiéí]=х gue=ге gué=ге gui=ги guí=ги gü=гу g=г que=ке qué=ке qui=ки quí=ки c>[eiéí]=с c=к tz=ц z=с s=с
    #<hie=йе he=э hé=э h= t<l=л l>h=л l>V=л l=ль ya=я yá=я V<ye=йе V<yé=йе ye=е yé=е yi=йи yo=йо yó=йо yu=ю yú=ю V<y=й y=и
    ia>#=ия ía>#=ия iago>#=ьяго iá=ья ión=ьон iu=ью ié=ье #<ie=йе ie=ье [aáeéoó]<i=й i=и í=и u=у ú=у ü=у
    #<[eé]=э [aáoóuúüií]<[eé]=э [eé]=е á=а ó=о
    """ + PLAIN, {"V": "aáeéiíoóuúü"}, "de del la las los el y e o en a al con")

GERMAN = Language("""
    stadt=штадт stedt=штедт stein=штайн wilhelm=вильгельм haven=хафен burg=бург
    tsch=ч sch=ш chs=кс ch=х ck>V=кк ck=к V<tz>V=тц tz=ц dt=дт th>eim=тх th>aus=тх th>of=тх th=т ph=ф qu=кв x=кс
    V<v>V=в v=ф w=в c>[eiäö]=ц c=к
    #<st=шт #<sp=шп
    [lnrdtgbfhkwmpcsze]<st>(a[dt]t|ein|ed[te]|ett|ätt|orf|egen|eig|ra[sß]|uhl|uben|egg#)=шт sp>ring=шп ß=с
    [#lmnr]<s>V=з V<s>V=з ss=сс s=с z=ц gg>#=г g=г
    bb>C=б ff>C=ф tt>C=т nn>C=н mm>C=м ss>C=с gg>C=г
    ei=ай ai=ай ey=ай ay=ай oi=ой oy=ой uy=юй eu=ой äu=ой au=ау ie=и
    saa=заа aa=а ee>#=ее ee=е oo=о ae=е #<oe=э oe=ё #<ue=и ue=ю #<rh=р V<h>[C#]= V<h>e= h=х
    #<ja=я #<jä=е #<je=е #<jo=йо #<ju=ю #<jü=ю ja=я jä=е je=е jo=ё ju=ю
    #<ä=э ä=е #<ö=э ö=ё #<ü=и ü=ю #<e=э [eä]u<e=е [aeo][iy]<e=е [auoüöä]h<e=э V<e=э e=е i>a#=и i=и o=о u=у y=и
    [i]<a>#=я ll>V=лл ll>#=лль ll=ль l>V=л l=ль
    """ + PLAIN, {"V": "aäeioöuüy", "C": "bcdfghjklmnpqrsßtvwxz"},
    "am an ob der dem den die das im in bei auf und vor vorm von zu zum zur ober unter über hinter", "sankt=санкт see=зее")

POLISH = Language("""
    szcz=щ sz=ш cz=ч [ptk]<rz=ш [c]h<rz=ш rz=ж ch=х dź=дзь dż=дж ść=сць śc=сьц ś>[ćń]=с ś>V=с ś>#=сь ś=с ć=ць ń=нь ź=зь ż=ж
    ł=л ą>[bp]=ом ą=он ę>[bp]=ем ę=ен ó=у
    lia=ля lie=ле lio=лё liu=лю lą=лён la=ля lo=лё lu=лю ló=лю l>[eięy]=л l=ль
    ia=я ią=ён ie=е ię=ен io=ё ió=ю iu=ю i=и
    ja=я ją=ён je=е ję=ен ji=и jo=ё jó=ю ju=ю j=й [sc]z<y=и rz<y=и ż<y=и y=ы
    #<e=э V<e=э e=е u=у c=ц g=г h=х s=с w=в z=з
    """ + PLAIN, {"V": "aąeęioóuy"}, "nad pod na przy w we koło i")

CZECH_RULES = """
    ch=х č=ч š=ш ž=ж c=ц [ptkhcsš]<ř=рш ř>[ptkhcsš]=рш ř=рж
    ďa=дя ďo=дё ď=дь ťa=тя ťo=тё ť=ть ňa=ня ňo=нё ňu=ню ň=нь
    #<jí=йи #<ji=йи #<jo=йо ja=я já=я je=е jé=е ji=йи jí=йи jo=йо ju=ю jů=ю j=й
    ě=е #<e=э [aouáóúů]<e=э e=е é=е i=и í=и y=и ý=и u=у ú=у ů=у á=а ó=о g=г h=г s=с z=з l=л
    """ + PLAIN
CZECH = Language(CZECH_RULES, {"V": "aáeéěiíoóuúůyý"}, "nad pod na u v ve za při a")
SLOVAK = Language("ľa=ля ľo=лё ľu=лю ľ=ль ĺ=л ŕ=р ô=уо ä=е ia=ья ie=ье iu=ью" + CZECH_RULES,
                  {"V": "aáäeéiíoóôuúyý"}, "nad pod na pri v za a")

HUNGARIAN = Language("""
    ssz=сс sz=с zs=ж cs=ч s=ш
    gya=дья gyá=дья gye=дье gyé=дье gyi=дьи gyí=дьи gyo=дьо gyó=дьо gyö=дьё győ=дьё gyu=дью gyú=дью gy=дь
    nya=нья nyá=нья nye=нье nyé=нье nyi=ньи nyí=ньи nyo=ньо nyó=ньо nyö=ньё nyő=ньё nyu=нью nyú=нью ny=нь ty=ть
    lya=я lyá=я lye=е lyé=е lyo=йо lyó=йо lyu=ю lyú=ю ly=й ja=я já=я je=е jé=е jo=йо jó=йо ju=ю jú=ю j=й
    cz=ц c=ц #<[öő]=э [öő]=ё #<[üű]=и [üű]=ю #<[eé]=э [aáoóuú]<[eé]=э [eé]=е á=а ó=о i=и í=и u=у ú=у y=и
    g=г h=х ll>V=лл l>[Vl]=л l=ль z=з w=в
    """ + PLAIN, {"V": "aáeéiíoóöőuúüű"})

YUGOSLAV = Language("""
    č=ч ć=ч š=ш ž=ж đ=дж ð=дж dž=дж c=ц lja=ля lje=ле lji=ли ljo=льо lju=лю lj=ль nja=ня nje=не nji=ни njo=нё nju=ню nj=нь
    ja=я je=е ji=и jo=йо ju=ю j=й #<e=э [aou]<e=э e=е i=и u=у g=г h=х l=л s=с z=з
    """ + PLAIN, {}, "na kod pri u nad pod ob v")

LATVIAN = Language("""
    č=ч š=ш ž=ж c=ц ģ=г ķ=к ļa=ля ļā=ля ļu=лю ļo=лё ļ>[ei]=л ļ=ль ņa=ня ņā=ня ņu=ню ņo=нё ņ>[ei]=н ņ=нь
    ja=я jā=я ji=и je=е jē=е jo=йо ju=ю jū=ю j=й
    ā=а #<[eē]=э [aāouū]<[eē]=э [eē]=е [aāeēouū]<i=й i=и ī=и u=у ū=у g=г h=х l=л s=с z=з
    """ + PLAIN)

JAPANESE = Language("""
    shi=си sha=ся sho=сё shō=сё shu=сю shū=сю chi=ти cha=тя cho=тё chō=тё chu=тю chū=тю tch>[iaouōū]=т tsu=цу tsū=цу
    ji=дзи ja=дзя jo=дзё jō=дзё ju=дзю jū=дзю #<z=з z=дз fu=фу ei=эй dai=дай i=и
    kya=кя kyo=кё kyō=кё kyu=кю kyū=кю gya=гя gyo=гё gyō=гё gyu=гю gyū=гю nya=ня nyo=нё nyō=нё nyu=ню nyū=ню
    hya=хя hyo=хё hyō=хё hyu=хю hyū=хю mya=мя myo=мё myō=мё ryo=рё ryō=рё ryu=рю ryū=рю rya=ря byo=бё byō=бё bya=бя pyo=пё
    ya=я yo=ё yō=ё yu=ю yū=ю wa=ва n>[bpm]=м n'=нъ
    V<e=э #<e=э e=е ē=э ā=а ō=о u=у ū=у g=г h=х s=с
    """ + PLAIN, {"V": "aeiouāōūē"})

# The languages by country, and the first-level regions of it where most names are of another language.
LANGUAGES = {
    **dict.fromkeys("AR BO CL CO CR CU DO EC GT HN MX NI PA PE PR PY SV UY VE".split(), (SPANISH, ())),
    **dict.fromkeys("BA HR ME RS SI".split(), (YUGOSLAV, ())),
    "AT": (GERMAN, ()), "DE": (GERMAN, ()),
    "ES": (SPANISH, ("07", "32", "56", "58", "59", "60")),
    "IT": (ITALIAN, ("17", "19")),
    "CZ": (CZECH, ()), "HU": (HUNGARIAN, ()), "JP": (JAPANESE, ()), "LV": (LATVIAN, ()), "PL": (POLISH, ()),
    "SK": (SLOVAK, ()),
}
LANGUAGE_NAMES = {
    "Italian": ITALIAN, "Spanish": SPANISH, "German": GERMAN, "Polish": POLISH, "Czech": CZECH, "Slovak": SLOVAK,
    "Hungarian": HUNGARIAN, "Croatian, Serbian, Bosnian and Slovene": YUGOSLAV, "Latvian": LATVIAN, "Japanese": JAPANESE,
}


def language_of(country, region):
    """Returns the language of the names in a region, by the codes of the source, or None."""
    language, others = LANGUAGES.get(country, (None, ()))
    return None if region in others else language


def transcribed(name, country, region):
    """Returns the Russian name of a place by its native name and the codes of its country and region, or None."""
    language = language_of(country, region)
    # A Japanese name with a hyphen is put together from those of a former and a present municipality.
    if language is None or name.endswith(" City") or (language is JAPANESE and "-" in name):
        return None
    return language.name(name)
